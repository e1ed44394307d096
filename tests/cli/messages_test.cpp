// Text from a drawing or an exception, fit for one line.

#include "cli/common/messages.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tests {

using taldork::cli::caughtMessage;
using taldork::cli::oneLine;

namespace {

template <class Thrown>
std::string messageOf(const Thrown& thrown) {
    try {
        throw thrown;
    } catch (...) {
        return caughtMessage();
    }
}

} // namespace

TEST(OneLine, EveryControlCharacterIsABlank) {
    for (int c = 0; c < 0x20; ++c)
        EXPECT_EQ(oneLine(std::string("a") + static_cast<char>(c) + "b"), "a b") << c;
    EXPECT_EQ(oneLine("a\x7f"), "a ");
    for (int c = 0x80; c <= 0x9f; ++c)
        EXPECT_EQ(oneLine(std::string("a\xc2") + static_cast<char>(c) + "b"), "a b") << c;
    EXPECT_EQ(oneLine("\x1b[31mred\r\n"), " [31mred  ");
}

TEST(OneLine, AllElseStaysByteForByte) {
    const std::string text = "\xc3\x9c\xc3\x80 \xc2\xa0\xc2\xb0 \xe2\x82\x80 \xf0\x9f\x98\x80 ~ \xc2";
    EXPECT_EQ(oneLine(text), text);
    EXPECT_EQ(oneLine(""), "");
}

TEST(CaughtMessage, IsWhatAnExceptionSays) {
    EXPECT_EQ(messageOf(std::runtime_error("filer error")), "filer error");
}

TEST(CaughtMessage, IsWideTextThatWasThrown) {
    wchar_t text[] = L"Tr\u00e4ger";
    const wchar_t* const constText = text;
    wchar_t* const plainText = text;
    EXPECT_EQ(messageOf<const wchar_t*>(constText), "Tr\xc3\xa4ger");
    EXPECT_EQ(messageOf<wchar_t*>(plainText), "Tr\xc3\xa4ger");
    EXPECT_EQ(messageOf<const wchar_t*>(nullptr), "");
}

TEST(CaughtMessage, TellsThatTheKindIsUnknown) { EXPECT_EQ(messageOf(42), "of an unknown kind"); }

} // namespace tests
