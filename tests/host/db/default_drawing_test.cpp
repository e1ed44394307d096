#include "symbol_fixture.h"

#include "dbdict.h"
#include "dblayout.h"
#include "dbmstyle.h"
#include "dbplhldr.h"

namespace {

using Names = std::vector<std::wstring>;

// The parameter says whether the drawing has been to a file and back.
class DefaultDrawing : public SymbolFixture, public ::testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        SymbolFixture::SetUp();
        if (!GetParam())
            return;
        const TemporaryFolder folder;
        ASSERT_EQ(m_database->saveAs(folder.file(L"new.dwg").c_str()), Acad::eOk)
            << embedded::lastFileError();
        m_database = std::make_unique<AcDbDatabase>(false);
        ASSERT_EQ(m_database->readDwgFile(folder.file(L"new.dwg").c_str()), Acad::eOk)
            << embedded::lastFileError();
    }

    Adesk::UInt64 handleOf(AcDbObjectId id) { return id.handle(); }

    Names entries(AcDbObjectId dictionaryId) {
        Names all;
        auto* dictionary = open<AcDbDictionary>(dictionaryId);
        const std::unique_ptr<AcDbDictionaryIterator> it(dictionary->newIterator());
        for (; !it->done(); it->next())
            all.emplace_back(it->name());
        dictionary->close();
        return all;
    }
};

TEST_P(DefaultDrawing, TablesHaveTheHandlesThatProductsGiveThem) {
    EXPECT_EQ(handleOf(m_database->blockTableId()), 0x1u);
    EXPECT_EQ(handleOf(m_database->layerTableId()), 0x2u);
    EXPECT_EQ(handleOf(m_database->textStyleTableId()), 0x3u);
    EXPECT_EQ(handleOf(m_database->linetypeTableId()), 0x5u);
    EXPECT_EQ(handleOf(m_database->viewTableId()), 0x6u);
    EXPECT_EQ(handleOf(m_database->UCSTableId()), 0x7u);
    EXPECT_EQ(handleOf(m_database->viewportTableId()), 0x8u);
    EXPECT_EQ(handleOf(m_database->regAppTableId()), 0x9u);
    EXPECT_EQ(handleOf(m_database->dimStyleTableId()), 0xAu);
    EXPECT_EQ(handleOf(m_database->namedObjectsDictionaryId()), 0xCu);
    EXPECT_EQ(handleOf(m_database->layerZero()), 0x10u);
    EXPECT_EQ(static_cast<Adesk::UInt64>(m_database->handseed()), 0x2Au);
}

TEST_P(DefaultDrawing, EveryTableHasWhatADrawingMustHave) {
    EXPECT_EQ(names(m_database->blockTableId()), (Names{L"*Model_Space", L"*Paper_Space"}));
    EXPECT_EQ(names(m_database->layerTableId()), Names{L"0"});
    EXPECT_EQ(names(m_database->linetypeTableId()), (Names{L"ByBlock", L"ByLayer", L"Continuous"}));
    EXPECT_EQ(names(m_database->textStyleTableId()), Names{L"Standard"});
    EXPECT_EQ(names(m_database->dimStyleTableId()), Names{L"Standard"});
    EXPECT_EQ(names(m_database->regAppTableId()), Names{L"ACAD"});
    EXPECT_EQ(names(m_database->viewportTableId()), Names{L"*Active"});
    EXPECT_EQ(names(m_database->viewTableId()), Names{});
    EXPECT_EQ(names(m_database->UCSTableId()), Names{});
}

TEST_P(DefaultDrawing, TheNamedObjectDictionaryHasWhatADrawingMustHave) {
    EXPECT_EQ(entries(m_database->namedObjectsDictionaryId()),
              (Names{L"ACAD_GROUP", L"ACAD_LAYOUT", L"ACAD_MLINESTYLE", L"ACAD_PLOTSETTINGS",
                     L"ACAD_PLOTSTYLENAME"}));
    EXPECT_EQ(entries(m_database->layoutDictionaryId()), (Names{L"Model", L"Layout1"}));
    EXPECT_EQ(entries(m_database->groupDictionaryId()), Names{});
    EXPECT_EQ(entries(m_database->mLineStyleDictionaryId()), Names{L"Standard"});
    EXPECT_EQ(entries(m_database->plotStyleNameDictionaryId()), Names{L"Normal"});
}

TEST_P(DefaultDrawing, PlotStylesAnswerAnyNameWithNormal) {
    auto* styles = open<AcDbDictionaryWithDefault>(m_database->plotStyleNameDictionaryId());
    AcDbObjectId normal, other;
    EXPECT_EQ(styles->getAt(L"Normal", normal), Acad::eOk);
    EXPECT_EQ(styles->getAt(L"no such", other), Acad::eOk);
    EXPECT_EQ(normal, other);
    styles->close();
    auto* holder = open<AcDbPlaceHolder>(normal);
    EXPECT_EQ(holder->ownerId(), m_database->plotStyleNameDictionaryId());
    holder->close();
    auto* layer = open<AcDbLayerTableRecord>(m_database->layerZero());
    EXPECT_EQ(layer->plotStyleNameId(), normal);
    EXPECT_EQ(layer->linetypeObjectId(), m_database->continuousLinetype());
    layer->close();
}

TEST_P(DefaultDrawing, BlocksAndLayoutsNameEachOther) {
    const std::pair<const wchar_t*, const wchar_t*> pairs[] = {{L"Model", ACDB_MODEL_SPACE},
                                                               {L"Layout1", ACDB_PAPER_SPACE}};
    int tab = 0;
    for (const auto& [layoutName, blockName] : pairs) {
        auto* layouts = open<AcDbDictionary>(m_database->layoutDictionaryId());
        AcDbLayout* layout = nullptr;
        ASSERT_EQ(layouts->getAt(layoutName, layout, AcDb::kForRead), Acad::eOk);
        layouts->close();
        auto* blocks = open<AcDbBlockTable>(m_database->blockTableId());
        AcDbBlockTableRecord* block = nullptr;
        ASSERT_EQ(blocks->getAt(blockName, block, AcDb::kForRead), Acad::eOk);
        blocks->close();
        EXPECT_EQ(layout->getBlockTableRecordId(), block->objectId());
        EXPECT_EQ(block->getLayoutId(), layout->objectId());
        EXPECT_EQ(layout->modelType(), tab == 0);
        EXPECT_EQ(layout->getTabOrder(), tab++);
        const ACHAR* name = nullptr;
        layout->getLayoutName(name);
        EXPECT_STREQ(name, layoutName);
        layout->close();
        block->close();
    }
}

TEST_P(DefaultDrawing, TheMultilineStyleHasTwoLines) {
    auto* styles = open<AcDbDictionary>(m_database->mLineStyleDictionaryId());
    AcDbMlineStyle* style = nullptr;
    ASSERT_EQ(styles->getAt(L"Standard", style, AcDb::kForRead), Acad::eOk);
    styles->close();
    ASSERT_EQ(style->numElements(), 2);
    double offset = 0.0;
    Adesk::UInt16 colour = 0;
    EXPECT_EQ(style->getElementAt(1, offset, colour), Acad::eOk);
    EXPECT_EQ(offset, -0.5);
    EXPECT_EQ(colour, 256);
    EXPECT_EQ(style->getElementAt(2, offset, colour), Acad::eInvalidIndex);
    style->close();
}

TEST_P(DefaultDrawing, NothingIsLeftOpenAndNothingCanBeUndone) {
    EXPECT_FALSE(embedded::undo(*m_database));
    EXPECT_FALSE(m_database->isModified());
    for (Adesk::UInt64 handle = 1; handle < 0x2A; ++handle) {
        AcDbObjectId id;
        if (m_database->getAcDbObjectId(id, false, AcDbHandle(handle)) != Acad::eOk)
            continue;
        AcDbObject* object = nullptr;
        EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForWrite), Acad::eOk) << std::hex << handle;
        if (object != nullptr)
            object->close();
    }
}

INSTANTIATE_TEST_SUITE_P(FreshOrRead, DefaultDrawing, ::testing::Bool(),
                         [](const auto& info) { return info.param ? "read" : "fresh"; });

} // namespace
