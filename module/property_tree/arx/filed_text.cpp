#include "property_tree/arx/filed_text.h"

#include "dbfiler.h"

#include <algorithm>
#include <cstddef>

namespace orv::property_tree {

namespace {

// What is asked of a stream at once, so that a text is read by one call, as it was written by one. A damaged
// length costs at most this much memory before the stream runs dry; every further step doubles what is there.
constexpr std::size_t kReadStep = std::size_t{16} << 20;

} // namespace

Acad::ErrorStatus writeText(AcDbDwgFiler& filer, const std::string& text) {
    const auto length = static_cast<Adesk::UInt32>(text.size());
    const Acad::ErrorStatus es = filer.writeUInt32(length);
    if (es != Acad::eOk || length == 0)
        return es;
    return filer.writeBytes(text.data(), length);
}

Acad::ErrorStatus readText(AcDbDwgFiler& filer, std::string& text) {
    Adesk::UInt32 length = 0;
    Acad::ErrorStatus es = filer.readUInt32(&length);
    std::string read;
    while (es == Acad::eOk && read.size() < length) {
        const std::size_t have = read.size();
        const std::size_t step = std::min<std::size_t>(length - have, std::max(kReadStep, have));
        read.resize(have + step);
        es = filer.readBytes(&read[have], step);
    }
    if (es == Acad::eOk)
        text.swap(read);
    return es;
}

} // namespace orv::property_tree
