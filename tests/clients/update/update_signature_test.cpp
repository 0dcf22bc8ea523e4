// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/update_signature.h"

#include "clients/update/test_feed.h"
#include "clients/update/update_error.h"
#include "effects/atomic_file.h"
#include "support/json_printers.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

QString base64(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

/// "genuine", or why not.
QString verdict(const QByteArray &package, qint64 length, const QString &signature,
                const QString &key)
{
    try {
        UpdateKey::fromBase64(key).value().requireGenuine(
            package, length, UpdateSignature::fromBase64(signature).value());
        return QStringLiteral("genuine");
    } catch (const UpdateError &error) {
        return error.description();
    }
}

const QString notOurs =
    QStringLiteral("The update was refused: its signature is not that of Veltrix.");

TEST(UpdateSignature, ThatOfTheOpensslProgramIsUnderstood)
{
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("openssl"));
    ASSERT_FALSE(tool.isEmpty());
    const QTemporaryDir folder;
    // Gives what the program prints; the words are parted by spaces.
    const auto openssl = [&](const char *words) {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(tool, QString::fromLatin1(words).split(u' '));
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput();
    };
    const QByteArray package = "the bytes of a package";
    writeFileAtomically(folder.filePath(QStringLiteral("package")), package);
    openssl("genpkey -algorithm ed25519 -out key.pem");
    const QByteArray publicKey = openssl("pkey -in key.pem -pubout -outform DER").last(32);
    const QByteArray signature = openssl("pkeyutl -sign -rawin -inkey key.pem -in package");
    EXPECT_EQ(verdict(package, package.size(), base64(signature), base64(publicKey)),
              QStringLiteral("genuine"));
    EXPECT_EQ(
        verdict("the bytes of a Package", package.size(), base64(signature), base64(publicKey)),
        notOurs);
}

TEST(UpdateSignature, AKeyIsBase64OfExactly32Bytes)
{
    for (int size = 0; size <= 100; ++size) {
        EXPECT_EQ(UpdateKey::fromBase64(base64(QByteArray(size, 'k'))).has_value(), size == 32)
            << size;
    }
}

TEST(UpdateSignature, ASignatureIsBase64OfExactly64Bytes)
{
    for (int size = 0; size <= 130; ++size) {
        EXPECT_EQ(UpdateSignature::fromBase64(base64(QByteArray(size, 's'))).has_value(),
                  size == 64)
            << size;
    }
}

TEST(UpdateSignature, OnlyTheStandardAlphabetWithItsPaddingIsRead)
{
    const QString good = base64(QByteArray(32, '\xfb'));
    ASSERT_TRUE(good.contains(u'+') && good.endsWith(u'='));
    ASSERT_TRUE(UpdateKey::fromBase64(good).has_value());
    QString urlAlphabet = good;
    urlAlphabet.replace(u'+', u'-').replace(u'/', u'_');
    QString withNull = good;
    withNull[3] = QChar(0);
    QString wide = good;
    wide[3] = QChar(0x100 + u'A');
    const QString looseEnd = good.chopped(2) + QStringLiteral("t=");
    for (const QString &bad : {urlAlphabet, good.chopped(1), good + u'=', good + u'\n', u' ' + good,
                               good.first(8) + u'\n' + good.mid(8), withNull, wide, looseEnd})
        EXPECT_FALSE(UpdateKey::fromBase64(bad).has_value()) << bad.toStdString();
}

TEST(UpdateSignature, AKnownSignatureIsVerified)
{
    // The second test vector of RFC 8032: a message of one byte.
    const auto fromHex = [](const char *hex) {
        return base64(QByteArray::fromHex(hex));
    };
    const QString key = fromHex("3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c");
    const QString signature =
        fromHex("92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da"
                "085ac1e43e15996e458f3613d0f11d8c387b2eaeb4302aeeb00d291612bb0c00");
    EXPECT_EQ(verdict("\x72", 1, signature, key), QStringLiteral("genuine"));
    EXPECT_EQ(verdict("\x73", 1, signature, key), notOurs);
}

TEST(UpdateSignature, TheLengthIsComparedBeforeTheSignature)
{
    const TestSigner signer;
    const QByteArray package = "a package";
    const QString good = signer.sign(package);
    EXPECT_EQ(verdict(package, 9, good, signer.publicKey()), QStringLiteral("genuine"));
    EXPECT_EQ(verdict(package, 10, good, signer.publicKey()),
              QStringLiteral("The update was refused: it has 9 bytes, not the announced 10."));
    EXPECT_EQ(verdict(package, 8, base64(QByteArray(64, 'x')), signer.publicKey()),
              QStringLiteral("The update was refused: it has 9 bytes, not the announced 8."));
}

TEST(UpdateSignature, AnotherKeysSignatureIsRefused)
{
    const QByteArray package = "a package";
    EXPECT_EQ(verdict(package, 9, TestSigner(2).sign(package), TestSigner(1).publicKey()), notOurs);
}

TEST(UpdateSignature, AWeakKeyVouchesForNothing)
{
    // With the neutral point as key and zeros as signature, careless code accepts any message.
    QByteArray neutral(32, '\0');
    neutral[0] = 1;
    QByteArray zeros(64, '\0');
    zeros[0] = 1;
    EXPECT_EQ(verdict("any", 3, base64(zeros), base64(neutral)), notOurs);
    EXPECT_EQ(verdict("any", 3, base64(QByteArray(64, '\0')), base64(QByteArray(32, '\0'))),
              notOurs);
}

RC_GTEST_PROP(UpdateSignatureProperty, OneChangedBitIsNoticed, ())
{
    const TestSigner signer;
    const auto bytes = *rc::gen::nonEmpty<std::vector<char>>();
    QByteArray package(bytes.data(), qsizetype(bytes.size()));
    QByteArray signature = QByteArray::fromBase64(signer.sign(package).toLatin1());
    RC_ASSERT(verdict(package, package.size(), base64(signature), signer.publicKey()) ==
              QStringLiteral("genuine"));
    QByteArray &changed = *rc::gen::arbitrary<bool>() ? package : signature;
    const auto bit = *rc::gen::inRange<qsizetype>(0, changed.size() * 8);
    changed[bit / 8] = char(changed[bit / 8] ^ (1 << (bit % 8)));
    RC_ASSERT(verdict(package, package.size(), base64(signature), signer.publicKey()) == notOurs);
}

} // namespace
} // namespace veltrix
