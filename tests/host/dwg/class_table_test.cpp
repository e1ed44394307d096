#include "dwg/class_table.h"

#include "dwg/bit_writer.h"
#include "dwg/file_error.h"

#include <gtest/gtest.h>

using namespace embedded::dwg;

namespace {

ClassRow row(const std::string& className, const std::string& dxfName, std::uint16_t itemClass) {
    ClassRow made;
    made.className = className;
    made.dxfName = dxfName;
    made.application = "AN_APP";
    made.proxyFlags = 0x401;
    made.itemClass = itemClass;
    return made;
}

Bytes tableOfTwo() {
    ClassTable table;
    table.add(row("FirstClass", "SHARED", ClassRow::kObjects));
    table.add(row("SecondClass", "SHARED", ClassRow::kEntities));
    return table.write();
}

} // namespace

TEST(ClassTable, RowsGetNumbersFrom500OnInTheOrderOfComing) {
    const ClassTable table = ClassTable::read(tableOfTwo());
    ASSERT_EQ(table.rows().size(), 2u);
    EXPECT_EQ(table.rows()[0].number, 500);
    EXPECT_EQ(table.rows()[1].number, 501);
    EXPECT_EQ(ClassRow::text(table.rows()[0].className), "FirstClass");
    EXPECT_EQ(ClassRow::text(table.rows()[0].application), "AN_APP");
    EXPECT_EQ(table.rows()[0].proxyFlags, 0x401);
    EXPECT_FALSE(table.rows()[0].makesEntities());
    EXPECT_TRUE(table.rows()[1].makesEntities());
}

TEST(ClassTable, TwoClassesOfOneDxfNameAreToldApartByClassName) {
    const ClassTable table = ClassTable::read(tableOfTwo());
    ASSERT_NE(table.find("SecondClass"), nullptr);
    EXPECT_EQ(table.find("SecondClass")->number, 501);
    EXPECT_EQ(table.find("SHARED"), nullptr);
    EXPECT_EQ(table.find(500)->number, 500);
    EXPECT_EQ(table.find(502), nullptr);
}

TEST(ClassTable, ARowThatIsAddedComesBehindAndLeavesTheOthers) {
    ClassTable table = ClassTable::read(tableOfTwo());
    EXPECT_EQ(table.add(row("Third", "THIRD", ClassRow::kObjects)), 502);
    const ClassTable again = ClassTable::read(table.write());
    ASSERT_EQ(again.rows().size(), 3u);
    EXPECT_EQ(ClassRow::text(again.rows()[0].className), "FirstClass");
    EXPECT_EQ(again.find("Third")->number, 502);
}

TEST(ClassTable, AnUnchangedOneGoesBackWithTheBitsBehindItsLastRow) {
    Bytes data = tableOfTwo();
    data.back() |= 1;
    EXPECT_EQ(ClassTable::read(data).write(), data);
}

TEST(ClassTable, NewTextsEndAsThoseThatAreThere) {
    BitWriter plain;
    plain.bitShort(500);
    plain.bitShort(0);
    for (const char* text : {"APP", "Name", "DXF"})
        plain.filedText(text);
    plain.bit(false);
    plain.bitShort(ClassRow::kObjects);
    ClassTable table = ClassTable::read(plain.bytes());
    table.add(row("Other", "OTHER", ClassRow::kObjects));
    EXPECT_EQ(table.rows()[1].className, "Other");
    ClassTable terminated = ClassTable::read(tableOfTwo());
    terminated.add(row("Other", "OTHER", ClassRow::kObjects));
    EXPECT_EQ(terminated.rows()[2].className, std::string("Other\0", 6));
}

TEST(ClassTable, ANumberThatComesTwiceIsRefused) {
    BitWriter out;
    for (int i = 0; i < 2; ++i) {
        out.bitShort(500);
        out.bitShort(0);
        for (int text = 0; text < 3; ++text)
            out.filedText("text");
        out.bit(false);
        out.bitShort(ClassRow::kObjects);
    }
    EXPECT_THROW(ClassTable::read(out.bytes()), FileError);
}

TEST(ClassTable, EveryPrefixInsideARowIsRefused) {
    const Bytes data = tableOfTwo();
    std::size_t read = 0;
    for (std::size_t size = 0; size < data.size(); ++size) {
        try {
            read += ClassTable::read(ByteSpan(data).part(0, size)).rows().size();
        } catch (const FileError& error) {
            EXPECT_EQ(error.kind(), FileError::kDamaged);
        }
    }
    // Only a cut right behind the first row leaves a table.
    EXPECT_LE(read, 2u);
}
