// SPDX-License-Identifier: GPL-3.0-or-later
// XML from outside, read without trusting it.
#pragma once

#include "model/error.h"

#include <QByteArray>
#include <QXmlStreamReader>

namespace veltrix
{

/// A document is not well-formed, not of the expected kind, or beyond a limit.
class XmlError final : public Error
{
public:
    using Error::Error;
};

/// How large a document may be.
struct XmlLimits {
    /// Bytes of the document.
    qint64 size = 1024 * 1024;
    /// Elements inside one another.
    int depth = 32;
};

/// Walks through the elements of a document. Nothing external is ever loaded; a document that
/// declares entities of its own is refused, so none can blow up. Every problem is an XmlError.
class SafeXmlReader
{
public:
    /// Throws when the document is too large.
    SafeXmlReader(QByteArray document, XmlLimits limits);

    /// Enters the next element inside the current one (at first: the root); at the end of the
    /// current one leaves it and gives false.
    bool enterChild();
    /// Leaves the current element and everything in it.
    void skip();
    /// The text of the current element, which must have no elements inside, and leaves it.
    QString takeText();
    /// Throws unless the document ends here, whole.
    void requireEnd();

    [[nodiscard]] QStringView name() const { return m_reader.name(); }
    [[nodiscard]] QStringView namespaceUri() const { return m_reader.namespaceUri(); }
    [[nodiscard]] QXmlStreamAttributes attributes() const { return m_reader.attributes(); }

private:
    /// Hears of entities that are not declared. In an attribute nothing else tells of them: where
    /// there is a document type elsewhere, they would leave a hole in its text.
    class UndeclaredEntities final : public QXmlStreamEntityResolver
    {
    public:
        QString resolveUndeclaredEntity(const QString &name) override
        {
            isUsed = true;
            return QXmlStreamEntityResolver::resolveUndeclaredEntity(name);
        }

        bool isUsed = false;
    };

    QXmlStreamReader::TokenType next();

    QByteArray m_document;
    UndeclaredEntities m_undeclared;
    QXmlStreamReader m_reader;
    int m_depth = 0;
    int m_depthLimit;
};

} // namespace veltrix
