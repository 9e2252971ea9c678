#include "host/StringList.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using fw::StringList;

TEST(StringList, EntriesAreCountedAndReachedFromOne)
{
    StringList list{"a", "b"};
    list.Add("c");
    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(list.Item(1), "a");
    EXPECT_EQ(list.Item(3), "c");

    list.SetItem(2, "B");
    list.Remove(1);
    EXPECT_EQ(list, (StringList{"B", "c"}));

    list.Clear();
    EXPECT_EQ(list.Count(), 0);
}

TEST(StringList, IndexesOutsideOneToCountThrow)
{
    StringList list{"only"};
    for (int bad : {0, -1, 2}) {
        SCOPED_TRACE(bad);
        EXPECT_THROW(list.Item(bad), std::out_of_range);
        EXPECT_THROW(list.SetItem(bad, "x"), std::out_of_range);
        EXPECT_THROW(list.Remove(bad), std::out_of_range);
    }
    EXPECT_EQ(list, StringList{"only"});
    EXPECT_THROW(StringList().Item(1), std::out_of_range);
}

TEST(StringList, SortIsByteOrderWithCapitalsFirstAndUtf8Last)
{
    StringList list{"b", "\xC3\xA4", "B", "a", "", "A"};
    list.Sort();
    EXPECT_EQ(list, (StringList{"", "A", "B", "a", "b", "\xC3\xA4"}));
}

TEST(StringList, RemoveValueTakesEveryEqualEntry)
{
    StringList list{"x", "y", "x", "X"};
    EXPECT_TRUE(list.Contains("X"));
    EXPECT_EQ(list.RemoveValue("x"), 2);
    EXPECT_EQ(list, (StringList{"y", "X"}));
    EXPECT_FALSE(list.Contains("x"));
    EXPECT_EQ(list.RemoveValue("absent"), 0);
}

TEST(StringList, TextFormRoundTripsAnyList)
{
    using namespace std::string_literals;
    const struct {
        const char* name;
        StringList list;
    } cases[] = {
        {"empty list", {}},
        {"one empty entry", {""}},
        {"two empty entries", {"", ""}},
        {"plain words", {"alpha", "beta"}},
        {"line breaks", {"a\nb", "\r\n", "\n", "end\r"}},
        {"backslashes and escapes as text", {"C:\\Temp\\", "\\n", "\\\\", "\\x41", "\\"}},
        {"separators", {"a|b", "a,b;c", "StringList 3", "  padded  ", "\t"}},
        {"nul bytes", {"\0"s, "a\0b"s, "\0\0"s}},
        {"control and high bytes", {"\x01\x1F\x7F", "\xFF\xFE", "\x80"}},
        {"utf-8",
         {"Gr\xC3\xBC\xC3\x9F"
          "e",
          "\xE2\x82\xAC 5", "\xF0\x9F\x98\x80"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string text = c.list.ToText();
        EXPECT_EQ(StringList::FromText(text), c.list);
    }
}

TEST(StringList, TextFormIsOneReadableLinePerEntry)
{
    const StringList list{"Gr\xC3\xBC\xC3\x9F"
                          "e",
                          "two\nlines", ""};
    EXPECT_EQ(list.ToText(), "StringList 3\nGr\xC3\xBC\xC3\x9F"
                             "e\ntwo\\nlines\n\n");
}

TEST(StringList, MalformedTextIsRejected)
{
    using namespace std::string_literals;
    const struct {
        const char* name;
        std::string text;
    } cases[] = {
        {"nothing", ""},
        {"no header", "a\nb\n"},
        {"header not ended", "StringList 0"},
        {"count missing", "StringList \n"},
        {"count not a number", "StringList x\n"},
        {"negative count", "StringList -1\n"},
        {"count with sign", "StringList +1\na\n"},
        {"count too large", "StringList 99999999999999999999999\n"},
        {"fewer entries", "StringList 2\na\n"},
        {"last entry not ended", "StringList 1\na"},
        {"more entries", "StringList 1\na\nb\n"},
        {"unknown escape", "StringList 1\na\\qb\n"},
        {"escape at line end", "StringList 1\na\\\n"},
        {"short hex escape", "StringList 1\n\\x4\n"},
        {"bad hex escape", "StringList 1\n\\xZZ\n"},
        {"raw carriage return", "StringList 1\na\r\n"},
        {"raw nul", "StringList 1\na\0b\n"s},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_THROW(StringList::FromText(c.text), std::invalid_argument);
    }
}

} // namespace
