#pragma once

#include "dwg/dwg_in_filer.h"
#include "dwg/dwg_out_filer.h"
#include "embedded/memory_filer.h"
#include "entity_fixture.h"

#include <functional>

using embedded::dwg::BitReader;
using embedded::dwg::BitWriter;
using embedded::dwg::DwgInFiler;
using embedded::dwg::DwgOutFiler;

// Data and handles of an entity as the drawing file has them.
struct FiledBits {
    BitWriter data;
    BitWriter handles;
};

inline void writeText(BitWriter& out, const std::string& text) { out.filedText(text + std::string(1, '\0')); }

class FiledEntities : public EntityFixture {
protected:
    void SetUp() override {
        EntityFixture::SetUp();
        m_block = addBlock(L"B");
        m_style = m_database->core().roots.textStyleStandard;
    }

    std::uint64_t handleOf(AcDbObjectId id) const { return static_cast<Adesk::UInt64>(id.handle()); }

    void expectFiledAs(const AcDbEntity& entity, const FiledBits& expected) {
        DwgOutFiler out(m_database->core().tag(), m_text);
        ASSERT_EQ(entity.dwgOutFields(&out), Acad::eOk);
        EXPECT_EQ(out.data().length(), expected.data.length());
        EXPECT_EQ(out.data().bytes(), expected.data.bytes());
        EXPECT_EQ(out.handles().length(), expected.handles.length());
        EXPECT_EQ(out.handles().bytes(), expected.handles.bytes());
    }

    Acad::ErrorStatus read(AcDbEntity& entity, const embedded::dwg::Bytes& data, std::size_t dataBits,
                           const embedded::dwg::Bytes& handles, std::size_t handleBits) {
        DwgInFiler in(m_database->core(), m_text, BitReader(data, 0, dataBits),
                      BitReader(handles, 0, handleBits), 0x1000);
        return entity.dwgInFields(&in);
    }

    Acad::ErrorStatus read(AcDbEntity& entity, const FiledBits& bits) {
        return read(entity, bits.data.bytes(), bits.data.length(), bits.handles.bytes(),
                    bits.handles.length());
    }

    // Reads what is told, files it, and expects the same again; and the same by way of the memory filer.
    template <class T>
    void expectBothWays(const FiledBits& bits, const std::function<void(const T&)>& check) {
        T entity;
        ASSERT_EQ(read(entity, bits), Acad::eOk);
        check(entity);
        expectFiledAs(entity, bits);
        std::vector<std::uint8_t> bytes;
        embedded::MemoryFiler out(AcDb::kUndoFiler, bytes);
        ASSERT_EQ(entity.dwgOutFields(&out), Acad::eOk);
        T again;
        embedded::MemoryFiler in(AcDb::kUndoFiler, bytes.data(), bytes.size());
        ASSERT_EQ(again.dwgInFields(&in), Acad::eOk);
        EXPECT_EQ(in.left(), 0u);
        check(again);
        expectFiledAs(again, bits);
        expectDamageIsFound<T>(bits, bytes);
    }

    // No prefix reads as whole, no single wrong bit does harm, and what stands behind the fields is not lost.
    template <class T>
    void expectDamageIsFound(const FiledBits& bits, const std::vector<std::uint8_t>& memory) {
        for (std::size_t length = 0; length < bits.data.length(); ++length) {
            T cut;
            EXPECT_EQ(read(cut, bits.data.bytes(), length, bits.handles.bytes(), bits.handles.length()),
                      Acad::eDwgObjectImproperlyRead)
                << length;
        }
        for (std::size_t length = 0; length < bits.handles.length(); ++length) {
            T cut;
            EXPECT_EQ(read(cut, bits.data.bytes(), bits.data.length(), bits.handles.bytes(), length),
                      Acad::eDwgObjectImproperlyRead)
                << length;
        }
        for (std::size_t length = 0; length < memory.size(); ++length) {
            T cut;
            embedded::MemoryFiler in(AcDb::kUndoFiler, memory.data(), length);
            EXPECT_NE(cut.dwgInFields(&in), Acad::eOk) << length;
        }
        for (std::size_t bit = 0; bit < bits.data.length(); ++bit) {
            T damaged;
            embedded::dwg::Bytes data = bits.data.bytes();
            data[bit / 8] = static_cast<std::uint8_t>(data[bit / 8] ^ 0x80u >> bit % 8);
            const Acad::ErrorStatus es =
                read(damaged, data, bits.data.length(), bits.handles.bytes(), bits.handles.length());
            EXPECT_TRUE(es == Acad::eOk || es == Acad::eDwgObjectImproperlyRead || es == Acad::eMakeMeProxy);
            AcDbExtents box;
            damaged.getGeomExtents(box);
        }
        T longer;
        embedded::dwg::Bytes more = bits.data.bytes();
        more.push_back(0);
        EXPECT_EQ(read(longer, more, bits.data.length() + 1, bits.handles.bytes(), bits.handles.length()),
                  Acad::eMakeMeProxy);
    }

    embedded::dwg::TextCodec m_text{30};
    AcDbObjectId m_block;
    AcDbObjectId m_style;
};
