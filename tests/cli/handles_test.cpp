#include "cli/common/handles.h"
#include "cli/common/table.h"

#include <gtest/gtest.h>

namespace tests {

using namespace taldork::cli;

TEST(HandlesTest, HexadecimalDigitsOfEitherCaseAreRead) {
    EXPECT_EQ(parseHandle("2A"), AcDbHandle(0x2a));
    EXPECT_EQ(parseHandle("02a"), AcDbHandle(0x2a));
    EXPECT_EQ(parseHandle("FFFFFFFFFFFFFFFF"), AcDbHandle(Adesk::UInt64(-1)));
}

TEST(HandlesTest, WhatIsNoHandleIsRefused) {
    for (const char* text : {"", "0", "000", "0x2A", "-1", "2A ", " 2A", "G", "10000000000000000"})
        EXPECT_FALSE(parseHandle(text)) << text;
    EXPECT_EQ(checkHandle("2A"), "");
    EXPECT_NE(checkHandle("x"), "");
}

TEST(TableTest, ColumnsAreAsWideAsTheirWidestCell) {
    Table table({"a", "name", "c"});
    table.add({"1", "\xc3\x9c", ""});
    table.add({"", "x\ny z", "last"});
    EXPECT_EQ(table.text(), "a  name   c\n1  \xc3\x9c      -\n-  x y z  last\n");
}

TEST(TableTest, WithoutRowsThereAreNoTitlesEither) { EXPECT_EQ(Table({"a", "b"}).text(), ""); }

} // namespace tests
