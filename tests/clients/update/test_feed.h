// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds and signatures for tests, made from short texts.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace veltrix
{

/// A releaser's Ed25519 key pair; each number gives another one, always the same.
class TestSigner
{
public:
    explicit TestSigner(char number = 1);

    /// Base64, as in the information dictionary.
    [[nodiscard]] QString publicKey() const;
    /// Base64, as in the feed.
    [[nodiscard]] QString sign(const QByteArray &package) const;

private:
    QByteArray m_publicKey;
    QByteArray m_secretKey;
};

/// A feed around the XML of its items. The feed's namespace has the prefix "u".
QByteArray feedWith(const QByteArray &items);

/// One item for Linux; every text can be replaced.
struct TestItem {
    QString version;
    /// XML inside the item, besides the version and the enclosure.
    QString elements;
    QString url = QStringLiteral("https://updates.example/veltrix.deb");
    QString length = QStringLiteral("1000");
    QString os = QStringLiteral("linux");
    /// Empty: not signed.
    QString signature = TestSigner().sign("any package");

    [[nodiscard]] QByteArray xml() const;
};

QByteArray feedOf(const QList<TestItem> &items);

} // namespace veltrix
