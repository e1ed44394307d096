#pragma once

#include "dbmain.h"
#include "dbsymtb.h"
#include "embedded/host_start.h"
#include "embedded/plot.h"
#include "support/picture_compare.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

// A list made by hand, and the picture of it: 120 by 90 pixels, a drawing unit to the pixel, the origin in
// the middle.
class PlotFixture : public testing::Test {
protected:
    using Primitive = embedded::Primitive;
    using Kind = embedded::PrimitiveKind;

    void SetUp() override {
        embedded::startHost();
        m_database = std::make_unique<AcDbDatabase>(true);
        m_page = embedded::PlotPage::ofPixels(120, 90);
        m_page.margin = 0.0;
        m_view.height = 90.0;
    }

    Primitive& add(Kind kind, std::vector<AcGePoint3d> points, int colour = 7) {
        Primitive made;
        made.kind = kind;
        made.points = std::move(points);
        made.normal = AcGeVector3d::kZAxis;
        made.direction = AcGeVector3d::kXAxis;
        made.traits.colour = static_cast<Adesk::UInt16>(colour);
        m_list.primitives.push_back(std::move(made));
        return m_list.primitives.back();
    }
    Primitive& addRound(Kind kind, const AcGePoint3d& centre, double radius, double sweep = 0.0) {
        Primitive& made = add(kind, {centre});
        made.radius = radius;
        made.sweep = sweep;
        return made;
    }
    Primitive& addText(const wchar_t* text, const AcGePoint3d& position, double height) {
        Primitive& made = add(Kind::kText, {position});
        made.text = text;
        made.height = height;
        return made;
    }

    std::string bytes(embedded::PlotFormat format) {
        std::vector<unsigned char> made;
        std::string failure;
        EXPECT_TRUE(embedded::plot(m_list, m_database.get(), m_view, m_page, m_style, format, made, failure))
            << failure;
        return std::string(made.begin(), made.end());
    }
    std::string png() { return bytes(embedded::PlotFormat::kPng); }
    testing_support::Picture picture() {
        testing_support::Picture made;
        EXPECT_TRUE(testing_support::readPicture(png(), made));
        return made;
    }
    testing::AssertionResult isGolden(const std::string& name) {
        return testing_support::isGoldenPicture("plot/" + name + ".png", png());
    }

    template <class Table, class Record, class Change>
    AcDbObjectId addRecord(AcDbObjectId tableId, const wchar_t* name, Change&& change) {
        Table* table = nullptr;
        AcDbObjectId id;
        EXPECT_EQ(acdbOpenObject(table, tableId, AcDb::kForWrite), Acad::eOk);
        auto* record = new Record;
        record->setName(name);
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        change(*record);
        record->close();
        table->close();
        return id;
    }

    std::unique_ptr<AcDbDatabase> m_database;
    embedded::DisplayList m_list;
    embedded::ViewParameters m_view;
    embedded::PlotPage m_page;
    embedded::PlotStyle m_style;
};
