#include "dwg/header_variables.h"

#include "dwg/file_error.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

using namespace embedded::dwg;

TEST(HeaderVariables, NamesAreThereOnce) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < kHeaderFieldCount; ++i)
        EXPECT_TRUE(names.insert(kHeaderFields[i].name).second) << kHeaderFields[i].name;
    EXPECT_EQ(names.size(), kHeaderFieldCount);
}

TEST(HeaderVariables, ANewDrawingHasItsDefaults) {
    const HeaderVariables variables;
    EXPECT_EQ(variables.number("CECOLOR"), 256u);
    EXPECT_EQ(variables.signedNumber("DIMLWD"), -2);
    EXPECT_EQ(variables.real("DIMTXT"), 0.18);
    EXPECT_EQ(variables.triple("UCSXDIR").x, 1.0);
    EXPECT_EQ(variables.triple("UCSYDIR").y, 1.0);
    EXPECT_EQ(variables.triple("EXTMIN").z, 1e20);
    EXPECT_EQ(variables.handle("CLAYER"), 0u);
}

TEST(HeaderVariables, WhatIsSetComesBackFromTheFile) {
    HeaderVariables variables;
    variables.setHandle("HANDSEED", 0x12345);
    variables.setHandle("BLOCK_CONTROL", 1);
    variables.setNumber("LUNITS", 4);
    variables.setReal("LTSCALE", 0.25);
    variables.setTriple("UCSORG", {1, 2, 3});
    variables.setTriple("LIMMAX", {420, 297, 0});
    variables.setText("MENU", "acad");
    variables.setTime("TDCREATE", 2459632, 777);
    const HeaderVariables read = HeaderVariables::read(variables.write());
    EXPECT_EQ(read.handle("HANDSEED"), 0x12345u);
    EXPECT_EQ(read.handle("BLOCK_CONTROL"), 1u);
    EXPECT_EQ(read.number("LUNITS"), 4u);
    EXPECT_EQ(read.real("LTSCALE"), 0.25);
    EXPECT_EQ(read.triple("UCSORG").z, 3.0);
    EXPECT_EQ(read.triple("LIMMAX").y, 297.0);
    EXPECT_EQ(read.text("MENU"), "acad");
    EXPECT_EQ(read.number("TDCREATE"), 2459632u);
    EXPECT_EQ(read.write(), variables.write());
}

TEST(HeaderVariables, ThePlotStyleHandleIsFiledOnlyForPlotStylesByHandle) {
    HeaderVariables without;
    without.setHandle("CPSNID", 0x77);
    EXPECT_EQ(HeaderVariables::read(without.write()).handle("CPSNID"), 0u);
    HeaderVariables with = without;
    with.setNumber("CEPSNTYPE", 3);
    EXPECT_EQ(HeaderVariables::read(with.write()).handle("CPSNID"), 0x77u);
}

TEST(HeaderVariables, WhatStandsBehindTheLastOneGoesBack) {
    Bytes data = HeaderVariables().write();
    data.insert(data.end(), {0xAB, 0xCD, 0xEF});
    EXPECT_EQ(HeaderVariables::read(data).write(), data);
}

TEST(HeaderVariables, EveryPrefixIsRefused) {
    const Bytes data = HeaderVariables().write();
    for (std::size_t size = 0; size + 1 < data.size(); ++size)
        EXPECT_THROW(HeaderVariables::read(ByteSpan(data).part(0, size)), FileError) << size;
}

TEST(HeaderVariables, DamagedBitsAreReadOrRefused) {
    const Bytes data = HeaderVariables().write();
    for (std::size_t bit = 0; bit < data.size() * 8; ++bit) {
        Bytes damaged = data;
        damaged[bit / 8] ^= static_cast<std::uint8_t>(1 << bit % 8);
        try {
            HeaderVariables::read(damaged);
        } catch (const FileError& error) {
            EXPECT_EQ(error.kind(), FileError::kDamaged);
        }
    }
}

TEST(HeaderVariables, AWrongNameIsAMistakeOfTheProgram) {
    EXPECT_THROW(HeaderVariables().number("NOSUCHVARIABLE"), std::logic_error);
}
