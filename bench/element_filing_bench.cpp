#include "bench_element.h"
#include "ratio.h"

#include "AcString.h"
#include "embedded/memory_filer.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <vector>

// 100,000 elements with two plugins each, out to memory and in again, beside a flat loop that makes the same
// objects and the same calls of the filer, and knows what there is.

ACRX_DXF_DEFINE_MEMBERS(BenchElement, AcDbEntity, AcDb::kDHL_1015, 0, 0, BENCHELEMENT, ElementBenches)

namespace {

using orv::elem::ElementBase;
using orv::elem::Plugin_ConnectedElements;
using orv::elem::Plugin_General;

constexpr int kElements = 100000;

const std::vector<std::unique_ptr<BenchElement>>& elements() {
    static const std::vector<std::unique_ptr<BenchElement>> all = [] {
        startElements();
        static AcDbDatabase db(true);
        std::vector<std::unique_ptr<BenchElement>> made;
        for (int i = 0; i < kElements; ++i) {
            made.push_back(std::make_unique<BenchElement>());
            equip(*made.back(), i, db.namedObjectsDictionaryId(), db.layerZero(), db.layerTableId());
        }
        return made;
    }();
    return all;
}

void check(bool done) {
    if (!done)
        std::abort();
}

void fileElements(benchmark::State& state) {
    elements();
    for (auto _ : state) {
        std::vector<std::uint8_t> bytes;
        embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
        for (const auto& element : elements())
            check(element->outStream(out) == Acad::eOk);
        embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
        for (int i = 0; i < kElements; ++i) {
            BenchElement element;
            check(element.inStream(in) == Acad::eOk);
        }
        check(in.left() == 0);
    }
    state.SetItemsProcessed(state.iterations() * kElements);
}
BENCHMARK(fileElements)->Unit(benchmark::kMillisecond)->Repetitions(5);

// The flat side.

class Body {
public:
    template <class T>
    Body& put(T value) {
        const auto* const bytes = reinterpret_cast<const unsigned char*>(&value);
        m_bytes.insert(m_bytes.end(), bytes, bytes + sizeof value);
        return *this;
    }
    void putText(const std::wstring& text) {
        put(static_cast<std::uint32_t>(text.size()));
        for (const wchar_t unit : text)
            put(static_cast<std::uint32_t>(unit));
    }
    void putText(const std::string& text) {
        put(static_cast<std::uint32_t>(text.size()));
        m_bytes.insert(m_bytes.end(), text.begin(), text.end());
    }
    void file(AcDbDwgFiler& filer) {
        filer.writeUInt32(static_cast<Adesk::UInt32>(m_bytes.size()));
        filer.writeBytes(m_bytes.data(), m_bytes.size());
        m_bytes.clear();
    }

private:
    std::vector<unsigned char> m_bytes;
};

class BodyReader {
public:
    void file(AcDbDwgFiler& filer) {
        Adesk::UInt32 size = 0;
        filer.readUInt32(&size);
        m_bytes.resize(size);
        m_place = 0;
        filer.readBytes(m_bytes.data(), size);
    }
    template <class T>
    T get() {
        T value;
        check(m_place + sizeof value <= m_bytes.size());
        std::memcpy(&value, m_bytes.data() + m_place, sizeof value);
        m_place += sizeof value;
        return value;
    }
    std::wstring getWide() {
        std::wstring text(get<std::uint32_t>(), L'\0');
        for (wchar_t& unit : text)
            unit = static_cast<wchar_t>(get<std::uint32_t>());
        return text;
    }
    std::string getNarrow() {
        const auto size = get<std::uint32_t>();
        check(m_place + size <= m_bytes.size());
        std::string text(reinterpret_cast<const char*>(m_bytes.data()) + m_place, size);
        m_place += size;
        return text;
    }

private:
    std::vector<unsigned char> m_bytes;
    std::size_t m_place = 0;
};

// A property block and a tree without entries.
void writeEmptyBlocks(AcDbDwgFiler& filer) {
    filer.writeUInt32(0);
    filer.writeInt32(1);
    filer.writeInt8('E');
    filer.writeInt32(static_cast<Adesk::Int32>(0xcafeefac));
}

void readEmptyBlocks(AcDbDwgFiler& filer) {
    Adesk::UInt32 count = 0;
    Adesk::Int32 number = 0;
    Adesk::Int8 end = 0;
    filer.readUInt32(&count);
    filer.readInt32(&number);
    filer.readInt8(&end);
    filer.readInt32(&number);
}

struct Plugins {
    const Plugin_General* general;
    const Plugin_ConnectedElements* connected;
};

void writeFlat(BenchElement& element, const Plugins& plugins, Body& body, AcDbDwgFiler& filer) {
    filer.writeInt32(6);
    filer.writeUInt32(2);
    filer.writeString(AcString(L"orv.base.general"));
    body.put(1U).put(4U);
    body.putText(plugins.general->getName());
    body.put(plugins.general->getNumber());
    body.putText(plugins.general->getBIMID());
    const AcGeVector3d& offset = plugins.general->getTextAttachmentOffset();
    body.put(offset.x).put(offset.y).put(offset.z);
    body.put(0xc67aafe7U).put(0xafdb7de5U).file(filer);
    filer.writeUInt32(0);
    filer.writeUInt32(0);
    writeEmptyBlocks(filer);
    filer.writeString(AcString(L"orv.se.connectedelements.1"));
    body.put(1U).put(4U).put(2U).put(0U).put(static_cast<std::uint32_t>(plugins.connected->size()));
    body.put(0xbd5ca77aU).put(0xafdb7de5U).file(filer);
    filer.writeUInt32(0);
    filer.writeUInt32(static_cast<Adesk::UInt32>(plugins.connected->size()));
    for (const AcDbObjectId& id : *plugins.connected)
        filer.writeHardPointerId(id);
    writeEmptyBlocks(filer);
    filer.writeHardPointerId(element.getNodDatabaseId());
    filer.writeString(AcString(element.getNodDatabaseName().c_str()));
    filer.writeUInt32(0);
    writeEmptyBlocks(filer);
    filer.writeBool(false);
    filer.writeInt32(0x736456af);
}

void readFlat(BenchElement& element, BodyReader& body, AcDbDwgFiler& filer) {
    Adesk::Int32 version = 0;
    Adesk::UInt32 count = 0;
    AcString text;
    filer.readInt32(&version);
    filer.readUInt32(&count);

    filer.readString(text);
    body.file(filer);
    auto general = Plugin_General::createPlugin();
    auto& plugin = static_cast<Plugin_General&>(*general);
    element.addPlugin(general);
    check(body.get<unsigned>() == 1 && body.get<unsigned>() == 4);
    plugin.setName(body.getWide());
    plugin.setNumber(body.get<unsigned>());
    plugin.setBIMID(body.getNarrow());
    const double x = body.get<double>();
    const double y = body.get<double>();
    plugin.setTextAttachmentOffset(AcGeVector3d(x, y, body.get<double>()));
    check(body.get<unsigned>() == 0xc67aafe7U && body.get<unsigned>() == 0xafdb7de5U);
    filer.readUInt32(&count);
    filer.readUInt32(&count);
    readEmptyBlocks(filer);

    filer.readString(text);
    body.file(filer);
    auto connected = Plugin_ConnectedElements::createPlugin();
    auto& links = static_cast<Plugin_ConnectedElements&>(*connected);
    element.addPlugin(connected);
    check(body.get<unsigned>() == 1 && body.get<unsigned>() == 4);
    links.setBehaviour(body.get<unsigned>());
    check(body.get<unsigned>() == 0 && body.get<unsigned>() == 2);
    check(body.get<unsigned>() == 0xbd5ca77aU && body.get<unsigned>() == 0xafdb7de5U);
    filer.readUInt32(&count);
    filer.readUInt32(&count);
    for (Adesk::UInt32 i = 0; i < count; ++i) {
        AcDbHardPointerId id;
        filer.readHardPointerId(&id);
        links.add(id);
    }
    readEmptyBlocks(filer);

    AcDbHardPointerId store;
    bool flag = false;
    filer.readHardPointerId(&store);
    filer.readString(text);
    element.setNodDatabaseId(store, text.kACharPtr());
    filer.readUInt32(&count);
    readEmptyBlocks(filer);
    filer.readBool(&flag);
    filer.readInt32(&version);
    check(version == 0x736456af);
}

void fileFlat(benchmark::State& state) {
    std::vector<Plugins> plugins;
    for (const auto& element : elements())
        plugins.push_back(
            {static_cast<const Plugin_General*>(element->getFirstPlugin(Plugin_General::static_pluginId())),
             static_cast<const Plugin_ConnectedElements*>(
                 element->getFirstPlugin(Plugin_ConnectedElements::static_pluginId()))});
    for (auto _ : state) {
        std::vector<std::uint8_t> bytes;
        embedded::MemoryFiler out(AcDb::kCopyFiler, bytes);
        Body body;
        for (int i = 0; i < kElements; ++i)
            writeFlat(*elements()[static_cast<std::size_t>(i)], plugins[static_cast<std::size_t>(i)], body,
                      out);
        embedded::MemoryFiler in(AcDb::kCopyFiler, bytes.data(), bytes.size());
        BodyReader reader;
        for (int i = 0; i < kElements; ++i) {
            BenchElement element;
            readFlat(element, reader, in);
        }
        check(in.left() == 0 && in.filerStatus() == Acad::eOk);
    }
    state.SetItemsProcessed(state.iterations() * kElements);
}
BENCHMARK(fileFlat)->Unit(benchmark::kMillisecond)->Repetitions(5);

const Comparison comparisons[] = {
    {"file 100,000 elements with two plugins out and in, against the same objects and calls", "fileElements",
     "fileFlat", 1.5},
};

} // namespace
