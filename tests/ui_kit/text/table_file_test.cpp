// SPDX-License-Identifier: GPL-3.0-or-later
// Files as people have them: encodings, separators, quotation marks, and what is no text.
#include "ui_kit/text/table_file.h"

#include "support/json_printers.h"
#include "ui_kit/text/csv.h"

#include <QStringEncoder>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support/generators.h"

namespace veltrix
{
namespace
{

/// The rows as "line:cell|cell", one a line.
QString rows(const QString &text)
{
    QStringList lines;
    for (const auto &[line, cells] : rowsOfText(text))
        lines << QString::number(line) + u':' + cells.join(u'|');
    return lines.join(u'\n');
}

QString errorOf(const std::function<void()> &act)
{
    try {
        act();
    } catch (const TableFileError &error) {
        return error.description();
    }
    return {};
}

QByteArray encoded(const QString &text, QStringConverter::Encoding encoding)
{
    QStringEncoder encoder(encoding);
    const QByteArray bytes = encoder.encode(text);
    return bytes;
}

const QString notText = QStringLiteral("The file is not a text file.");

TEST(TextOfFile, ReadsEveryUnicodeEncodingWithAndWithoutItsMark)
{
    using Encoding = QStringConverter::Encoding;
    // "一" has a zero byte on the other side.
    const QString text = QStringLiteral("Keyword\tStorefront\nBildgröße\tDE\n一写真\tJP\n");
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16LE, Encoding::Utf16BE}) {
        EXPECT_EQ(textOfFile(encoded(text, encoding)), text) << int(encoding);
        EXPECT_EQ(textOfFile(encoded(QChar(QChar::ByteOrderMark) + text, encoding)), text)
            << int(encoding);
    }
}

TEST(TextOfFile, WhatIsNoUtf8IsWindows1252)
{
    EXPECT_EQ(textOfFile("Gr\xF6\xDF"
                         "e;5 \x80\r\n\x84Wort\x93"),
              QStringLiteral("Größe;5 €\r\n„Wort“"));
    EXPECT_EQ(textOfFile("caf\xE9"), QStringLiteral("café")) << "at the very end, too";
    EXPECT_EQ(textOfFile(QByteArray()), QString());
}

TEST(TextOfFile, AStrayControlCharacterOfAUtf8TextIsLeftToBeRefusedAlone)
{
    EXPECT_EQ(textOfFile("photo\x07"), QStringLiteral("photo\u0007"));
}

TEST(TextOfFile, WhatIsNoTextIsRefused)
{
    const QByteArray jpeg = QByteArray::fromHex("ffd8ffe000104a46494600010101004800480000ffdb0043"
                                                "00080606070605080707070909080a0c140d0c0b0b0c19");
    const QByteArray zip = QByteArray::fromHex("504b030414000600080000002100b55530");
    for (const QByteArray &binary : {jpeg, zip, QByteArray("\xFF\x81\x8D", 3),
                                     QByteArray("a\0b", 3), QByteArray("\xFE\xFF\x00", 3)})
        EXPECT_EQ(errorOf([&] { textOfFile(binary); }), notText) << binary.toHex().toStdString();
}

TEST(TextOfFile, HalfOfACharacterIsNoText)
{
    // The first half of an emoji, alone: with the mark of UTF-16 and where UTF-16 is guessed.
    const QString half = QStringLiteral("a,") + QChar(0xD83D) + QStringLiteral(",b");
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(half.utf16()),
                                               half.size() * qsizetype(sizeof(char16_t)));
    EXPECT_THROW(textOfFile("\xff\xfe" + bytes), TableFileError);
    EXPECT_THROW(textOfFile(bytes), TableFileError);
}

TEST(RowsOfText, TheFirstPartedLineSaysWhatPartsTheCells)
{
    EXPECT_EQ(rows(QStringLiteral("a,b\nc;d,e")), QStringLiteral("1:a|b\n2:c;d|e"));
    EXPECT_EQ(rows(QStringLiteral("a;b\nc,d;e")), QStringLiteral("1:a|b\n2:c,d|e"));
    EXPECT_EQ(rows(QStringLiteral("a\tb\nc, d;\te")), QStringLiteral("1:a|b\n2:c, d;|e"));
    EXPECT_EQ(rows(QStringLiteral("one\ntwo;three")), QStringLiteral("1:one\n2:two|three"));
    EXPECT_EQ(rows(QStringLiteral("\"x;\"\"y;z\",b;c,d")), QStringLiteral("1:x;\"y;z|b;c|d"))
        << "what is quoted parts nothing";
    EXPECT_EQ(rows(QStringLiteral("sep=;\r\na,b;c\nd")), QStringLiteral("2:a,b|c\n3:d"));
}

TEST(RowsOfText, EveryKindOfLineEndEndsARowAndEmptyLinesAreNone)
{
    EXPECT_EQ(rows(QStringLiteral("a\nb\r\nc\rd\u2028e\u2029f\u0085g\n\n \n,\nh")),
              QStringLiteral("1:a\n2:b\n3:c\n4:d\n5:e\n6:f\n7:g\n10:|\n11:h"));
    EXPECT_TRUE(rowsOfText(QString()).isEmpty());
}

TEST(RowsOfText, AQuotedCellMayHoldSeparatorsQuotationMarksAndLineEnds)
{
    EXPECT_EQ(rows(QStringLiteral("\"a,\"\"b\"\"\", \"c\r\nd\" \n5\" e,f")),
              QStringLiteral("1:a,\"b\"|c\r\nd \n3:5\" e|f"));
}

TEST(RowsOfText, AQuotationMarkThatIsNotClosedIsAnErrorWithItsLine)
{
    EXPECT_EQ(errorOf([] { rowsOfText(QStringLiteral("a,b\r\n\"c\nd\",e\nf,\"g\nh,i\n")); }),
              QStringLiteral("The quotation mark in line 4 is not closed."));
    EXPECT_EQ(errorOf([] { rowsOfText(QStringLiteral("\"")); }),
              QStringLiteral("The quotation mark in line 1 is not closed."));
}

TEST(CsvFile, HasAByteOrderMarkAndQuotesOnlyWhatNeedsIt)
{
    EXPECT_EQ(toCsvFile({{QStringLiteral("ä"), QStringLiteral("b,c"), QStringLiteral("d;e")},
                         {QStringLiteral("say \"hi\""), QStringLiteral("two\nlines"), {}}}),
              QByteArray("\xEF\xBB\xBF"
                         "ä,\"b,c\",\"d;e\"\r\n\"say \"\"hi\"\"\",\"two\nlines\",\r\n"));
}

TEST(CsvFile, NoCellStartsAFormulaAndNumbersStayNumbers)
{
    for (const char *formula : {"=1+1", "+cmd", "-2+3", "@SUM(A1)", "\t=1", "\r=1", "＝1", "-", "+",
                                "'=1", "-3.5.1", "--3"}) {
        const QString cell = QString::fromUtf8(formula);
        EXPECT_EQ(guarded(cell), u'\'' + cell);
        EXPECT_EQ(unguarded(guarded(cell)), cell);
    }
    for (const char *plain : {"", "photo", "-3", "+12", "-3.5", "3,5", "'quoted'", "a=b", "'"}) {
        EXPECT_EQ(guarded(QString::fromUtf8(plain)), QString::fromUtf8(plain));
        EXPECT_EQ(unguarded(QString::fromUtf8(plain)), QString::fromUtf8(plain));
    }
    EXPECT_TRUE(toCsvFile({{QStringLiteral("=1;2")}}).endsWith("\"'=1;2\"\r\n"));
}

RC_GTEST_PROP(CsvFile, IsReadBackAsItWasWritten, (const std::vector<QStringList> &generated))
{
    QList<QStringList> table;
    for (QStringList row : generated) {
        // A row of one blank cell is an empty line, which is no row.
        if (row.size() < 2)
            row = {QStringLiteral("x"), row.value(0)};
        // No text holds zeros or halves of characters.
        for (QString &cell : row)
            cell.removeIf([](QChar c) { return c.isNull() || c.isSurrogate(); });
        table.append(row);
    }
    QList<QStringList> read;
    for (const TextRow &row : rowsOfText(textOfFile(toCsvFile(table)))) {
        QStringList cells;
        for (const QString &cell : row.cells)
            cells << unguarded(cell);
        read.append(cells);
    }
    RC_ASSERT(read == table);
}

} // namespace
} // namespace veltrix
