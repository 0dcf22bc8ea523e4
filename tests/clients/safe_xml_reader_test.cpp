// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/safe_xml_reader.h"

#include "support/json_printers.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// Elements as "name(child child)" and texts as they are.
QString outline(SafeXmlReader &reader)
{
    const QString name = reader.name().toString();
    if (name == QLatin1String("text"))
        return reader.takeText();
    if (name == QLatin1String("skipped")) {
        reader.skip();
        return QStringLiteral("-");
    }
    QStringList children;
    while (reader.enterChild())
        children.append(outline(reader));
    return name + u'(' + children.join(u' ') + u')';
}

QString read(const QByteArray &document, XmlLimits limits = {})
{
    try {
        SafeXmlReader reader(document, limits);
        reader.enterChild();
        const QString text = outline(reader);
        reader.requireEnd();
        return text;
    } catch (const XmlError &error) {
        return error.description();
    }
}

bool isRefused(const QByteArray &document)
{
    return read(document).startsWith(QStringLiteral("The document "));
}

TEST(SafeXmlReader, WalksThroughElementsAndTexts)
{
    EXPECT_EQ(
        read("<?xml version=\"1.0\"?><!-- c --><a><b/> x <text>1 &lt; &#x1F43B;<![CDATA[<2>]]>"
             "</text><skipped><text>no</text><deep><er/></deep></skipped><c><d/></c></a>\n"),
        QString::fromUtf8("a(b() 1 < 🐻<2> - c(d()))"));
    EXPECT_EQ(read("<a><text>x<b/></text></a>"),
              QStringLiteral("A text was expected in place of an element."));
}

TEST(SafeXmlReader, ADocumentTypeIsPassedOverAndLoadsNothing)
{
    EXPECT_EQ(read("<!DOCTYPE a PUBLIC \"-//X//DTD\" \"http://127.0.0.1:1/x.dtd\"><a/>"),
              QStringLiteral("a()"));
}

TEST(SafeXmlReader, EveryPrefixOfADocumentIsRefused)
{
    const QByteArray whole = "<a><b><text>x</text></b></a>";
    EXPECT_EQ(read(whole), QStringLiteral("a(b(x))"));
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_TRUE(isRefused(whole.first(length))) << length;
}

TEST(SafeXmlReader, NothingMayFollowTheDocument)
{
    for (const char *document : {"<a/><b/>", "<a/>text", "<a></b>", "no xml", "bplist00"})
        EXPECT_TRUE(isRefused(document)) << document;
}

TEST(SafeXmlReader, EntitiesAreRefusedAtOnce)
{
    QByteArray bomb = "<!DOCTYPE a [<!ENTITY a \"aaaaaaaaaa\">";
    for (char c = 'b'; c < 'k'; ++c) {
        bomb += QByteArray("<!ENTITY ") + c + " \"";
        bomb += ("&" + QByteArray(1, char(c - 1)) + ";").repeated(10) + "\">";
    }
    bomb += "]><a><text>&j;</text></a>";
    QByteArray parameterBomb = "<!DOCTYPE a [<!ENTITY % p0 \"<!ENTITY a 'x'>\">";
    for (int i = 1; i < 20; ++i) {
        const QByteArray last = "&#37;p" + QByteArray::number(i - 1) + ";";
        parameterBomb += "<!ENTITY % p" + QByteArray::number(i) + " \"" + last.repeated(10) + "\">";
    }
    parameterBomb += "%p19;]><a/>";
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(isRefused(bomb));
    EXPECT_TRUE(isRefused(parameterBomb));
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(read("<!DOCTYPE a [<!ENTITY e \"x\">]><a/>"),
              QStringLiteral("The document declares entities."));
    EXPECT_TRUE(isRefused("<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>"
                          "<a><text>&e;</text></a>"));
    EXPECT_TRUE(isRefused("<a><text>&unknown;</text></a>"));
}

TEST(SafeXmlReader, AnEntityThatIsNotDeclaredIsRefusedWhereverItStands)
{
    for (const char *type : {"", "<!DOCTYPE a SYSTEM \"http://127.0.0.1:1/x.dtd\">",
                             "<!DOCTYPE a PUBLIC \"-//X//DTD\" \"http://127.0.0.1:1/x.dtd\">"}) {
        for (const char *body : {"<a>&x;</a>", "<a><text>1&x;2</text></a>", "<a b=\"1&x;2\"/>",
                                 "<a><text b='&x;'/></a>", "<a><skipped>&x;</skipped></a>",
                                 "<a><skipped><b c='&x;'/></skipped></a>"})
            EXPECT_TRUE(isRefused(QByteArray(type) + body)) << type << body;
    }
}

TEST(SafeXmlReader, LimitsDepthAndSize)
{
    const auto nested = [](int levels) {
        return QByteArray("<b>").repeated(levels) + QByteArray("</b>").repeated(levels);
    };
    EXPECT_EQ(read(nested(4), {.depth = 4}), QStringLiteral("b(b(b(b())))"));
    const QString tooDeep = QStringLiteral("The document is nested too deeply.");
    EXPECT_EQ(read(nested(5), {.depth = 4}), tooDeep);
    EXPECT_EQ(read(nested(100'000)), tooDeep);
    EXPECT_EQ(read("<skipped>" + nested(100'000) + "</skipped>"), tooDeep);
    EXPECT_EQ(read("<a/>", {.size = 4}), QStringLiteral("a()"));
    EXPECT_EQ(read("<a/>", {.size = 3}), QStringLiteral("The document is too large."));
}

} // namespace
} // namespace veltrix
