// Reading RTF as the text a reader sees, and writing plain text as RTF.
#include "forms/RtfText.h"

#include <gtest/gtest.h>

using fw::PlainTextToRtf;
using fw::RtfToPlainText;

namespace {

TEST(RtfText, ReadsTheTextAReaderSees)
{
    struct Row {
        const char* name;
        const char* rtf;
        const char* text; ///< UTF-8
    };
    const Row rows[] = {
        {"plain words", R"({\rtf1\ansi Hallo Welt})", "Hallo Welt"},
        {"paragraphs and lines", R"({\rtf1 eins\par zwei\line drei})", "eins\nzwei\ndrei"},
        {"source line breaks are not text", "{\\rtf1 eins\r\nzwei}", "einszwei"},
        {"escaped line break is a paragraph", "{\\rtf1 eins\\\nzwei}", "eins\nzwei"},
        {"formatting dropped, groups kept", R"({\rtf1 {\b fett} und {\i kursiv}})",
         "fett und kursiv"},
        {"delimiting space eaten once", R"({\rtf1\b  zwei})", " zwei"},
        {"numeric parameter ends the word", R"({\rtf1\fs24 Text\fs20-Ende})", "Text-Ende"},
        {"escaped specials", R"({\rtf1 a\\b \{c\}})", "a\\b {c}"},
        {"tabs and cells", R"({\rtf1 a\tab b\cell c})", "a\tb\tc"},
        {"code page bytes", R"({\rtf1\ansi\ansicpg1252 Gr\'fc\'dfe \'80 \'96})", "Grüße € –"},
        {"unicode with fallback", R"({\rtf1\uc1 \u246?ffnen})", "öffnen"},
        {"unicode fallback as a byte", R"({\rtf1\uc1\u8364\'80 Euro})", "€ Euro"},
        {"longer fallback", R"({\rtf1\uc2\u228ae x})", "ä x"},
        {"no fallback", R"({\rtf1\uc0\u228 x})", "äx"},
        {"negative unicode", R"({\rtf1\u-3913?})", "\xEF\x82\xB7"},
        {"surrogate pair", R"({\rtf1\uc1\u-10179?\u-8704?})", "😀"},
        {"fallback count is per group", R"({\rtf1\uc1{\uc0\u228}\u246?})", "äö"},
        {"font and colour tables skipped",
         R"({\rtf1{\fonttbl{\f0\fswiss Arial;}}{\colortbl;\red255\green0\blue0;}\f0 Text})",
         "Text"},
        {"starred destination skipped", R"({\rtf1{\*\generator Writer;}{\*\unknown x}Text})",
         "Text"},
        {"field shows its result",
         R"({\rtf1{\field{\*\fldinst HYPERLINK "http://x"}{\fldrslt Link}}})", "Link"},
        {"info and picture skipped", R"({\rtf1{\info{\title T}}{\pict\pngblip 89504e}A})", "A"},
        {"symbols", R"({\rtf1\bullet\emdash\endash\lquote\rquote\ldblquote\rdblquote})", "•—–‘’“”"},
        {"non-breaking marks", R"({\rtf1 a\~b\-c\_d})",
         "a\xC2\xA0"
         "bc\xE2\x80\x91"
         "d"},
        {"binary data skipped", "{\\rtf1 a\\bin3 xyzb}", "ab"},
        {"unbalanced closing brace", R"({\rtf1 a}}b)", "ab"},
        {"unfinished document", R"({\rtf1 a\)", "a"},
        {"empty", "", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(RtfToPlainText(QString::fromUtf8(row.rtf)).toStdString(), row.text) << row.name;
}

TEST(RtfText, PlainTextSurvivesTheRoundTrip)
{
    for (const char* text :
         {"", "Hallo", "a\\b {c}", "eins\nzwei\tdrei", "Grüße 😀 שלום", "\\par is text"}) {
        const QString plain = QString::fromUtf8(text);
        const QString rtf = PlainTextToRtf(plain);
        EXPECT_TRUE(rtf.startsWith("{\\rtf1")) << text;
        EXPECT_EQ(RtfToPlainText(rtf), plain) << text;
    }
}

} // namespace
