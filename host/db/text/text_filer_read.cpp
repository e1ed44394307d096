#include "acutmem.h"
#include "db/text/group.h"
#include "db/text/group_text.h"
#include "dbmain.h"
#include "embedded/text_filer.h"
#include "platform/text.h"

#include <cstring>

namespace embedded {

using namespace text;

namespace {

constexpr wchar_t kEmbeddedObject[] = L"Embedded Object";

void giveText(resbuf& value, const std::wstring& text) { value.resval.rstring = acutNewString(text.c_str()); }

void giveChunk(resbuf& value, const std::string& bytes) {
    value.resval.rbinary.clen = static_cast<short>(bytes.size());
    value.resval.rbinary.buf = nullptr;
    if (bytes.empty())
        return;
    value.resval.rbinary.buf = static_cast<char*>(acutNewBuffer(bytes.size()));
    std::memcpy(value.resval.rbinary.buf, bytes.data(), bytes.size());
}

} // namespace

const Group* TextFiler::peek(std::size_t index) {
    if (!m_reader || m_status != Acad::eOk)
        return nullptr;
    while (m_ahead->size() <= index) {
        Group group;
        switch (m_reader->next(group)) {
        case GroupReader::kGroup:
            m_ahead->push_back(std::move(group));
            break;
        case GroupReader::kEnd:
            return nullptr;
        case GroupReader::kDamaged:
            return index == 0 ? failedPeek() : nullptr;
        }
    }
    return &(*m_ahead)[index];
}

const Group* TextFiler::failedPeek() {
    setError(Acad::eBadDxfSequence, L"%ls: %ls", m_reader->place().c_str(), m_reader->failure().c_str());
    return nullptr;
}

void TextFiler::take(std::size_t count) {
    m_given->clear();
    for (; count != 0; --count) {
        m_given->push_back(std::move(m_ahead->front()));
        m_ahead->pop_front();
    }
}

void TextFiler::pushBackItem() {
    m_ahead->insert(m_ahead->begin(), m_given->begin(), m_given->end());
    m_given->clear();
}

Adesk::Boolean TextFiler::atEOF() { return peek() == nullptr; }

Adesk::Boolean TextFiler::atEndOfObject() {
    const Group* const group = peek();
    return group == nullptr || group->code == AcDb::kDxfStart;
}

Adesk::Boolean TextFiler::atExtendedData() {
    const Group* const group = peek();
    return group != nullptr && group->code >= kFirstExtendedCode;
}

bool TextFiler::atText(int code, const ACHAR* text) {
    const Group* const group = peek();
    return group != nullptr && group->code == code && text != nullptr && group->text == text;
}

Adesk::Boolean TextFiler::atSubclassData(const ACHAR* className) {
    if (!atText(AcDb::kDxfSubclass, className))
        return false;
    take(1);
    return true;
}

Adesk::Boolean TextFiler::atEmbeddedObjectStart() {
    if (!atText(AcDb::kDxfEmbeddedObjectStart, kEmbeddedObject))
        return false;
    take(1);
    return true;
}

Acad::ErrorStatus TextFiler::writeEmbeddedObjectStart() {
    return writeString(AcDb::kDxfEmbeddedObjectStart, kEmbeddedObject);
}

std::wstring TextFiler::passObjectStart() {
    const Group* const group = peek();
    if (group == nullptr || group->code != AcDb::kDxfStart)
        return {};
    std::wstring name = group->text;
    take(1);
    m_given->clear();
    m_missedEnd = false;
    return name;
}

bool TextFiler::skipToObjectStart() {
    bool onlyExtended = true;
    bool extended = false;
    for (const Group* group = peek(); group != nullptr && group->code != AcDb::kDxfStart; group = peek()) {
        extended = extended || group->code >= kFirstExtendedCode;
        onlyExtended = onlyExtended && extended;
        take(1);
    }
    m_given->clear();
    return !onlyExtended;
}

// Bytes that end without the next object's start have been cut.
Acad::ErrorStatus TextFiler::endOfObject(resbuf* value) {
    value->restype = static_cast<short>(AcDb::kDxfInvalid);
    m_given->clear();
    if (!m_reader)
        return setError(Acad::eIsWriting, L"the stream is written");
    const Group* const group = peek();
    if (m_status != Acad::eOk)
        return m_status;
    if (group == nullptr)
        return setError(Acad::eEndOfObject, L"%ls: the object breaks off", m_reader->place().c_str());
    if (m_missedEnd)
        return setError(Acad::eEndOfObject, L"%ls: the object has ended", m_reader->place().c_str());
    m_missedEnd = true;
    return Acad::eEndOfFile;
}

Acad::ErrorStatus TextFiler::readResBuf(resbuf* value) {
    value->rbnext = nullptr;
    value->resval = {};
    if (atEndOfObject())
        return endOfObject(value);
    value->restype = static_cast<short>(m_ahead->front().code);
    if (beginsPoint(value->restype)) {
        take(readPoint(*value));
        return m_status;
    }
    readValue(*value);
    take(1);
    return m_status;
}

// How many of the groups ahead belong to the point: its second and third coordinates may be missing.
std::size_t TextFiler::readPoint(resbuf& value) {
    value.resval.rpoint[0] = m_ahead->front().real;
    std::size_t count = 1;
    for (; count < 3; ++count) {
        const Group* const group = peek(count);
        if (group == nullptr || group->code != value.restype + static_cast<int>(count) * kNextCoordinate)
            break;
        value.resval.rpoint[count] = group->real;
    }
    return count;
}

void TextFiler::readValue(resbuf& value) {
    const Group& group = m_ahead->front();
    switch (group.type) {
    case GroupType::kReal:
        value.resval.rreal = group.real;
        break;
    case GroupType::kInt16:
    case GroupType::kSwitch:
        value.resval.rint = static_cast<short>(group.integer);
        break;
    case GroupType::kInt32:
        value.resval.rlong = static_cast<Adesk::Int32>(group.integer);
        break;
    case GroupType::kInt64:
        value.resval.mnInt64 = group.integer;
        break;
    case GroupType::kHandle:
        giveText(value, platform::widen(handleText(group.handle)));
        break;
    case GroupType::kObjectId:
        value.resval.rlname[0] = idOf(group.handle).asOldId();
        break;
    case GroupType::kChunk:
        giveChunk(value, group.bytes);
        break;
    default:
        giveText(value, group.text);
    }
}

// Null for a handle that the database does not have: no object is made for it.
AcDbObjectId TextFiler::idOf(Adesk::UInt64 handle) const {
    AcDbObjectId id;
    if (m_database != nullptr && handle != 0 &&
        m_database->getAcDbObjectId(id, false, AcDbHandle(handle)) != Acad::eOk)
        id.setNull();
    return id;
}

} // namespace embedded
