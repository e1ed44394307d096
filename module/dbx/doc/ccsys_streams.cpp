#include "dbx/doc/ccsys_streams.h"

#include "AcString.h"
#include "acutads.h"
#include "acutmem.h"
#include "platform/text.h"

#include <algorithm>

namespace orv::detail {

namespace {

// Up to the first zero.
std::wstring widened(const char* bytes, std::size_t length) {
    return platform::widen({bytes, static_cast<std::size_t>(std::find(bytes, bytes + length, '\0') - bytes)});
}

} // namespace

std::wstring DwgItemSource::text() {
    AcString value;
    ORV_NOTE_STATUS(m_filer.readString(value));
    return value.kACharPtr();
}

Adesk::Int32 DwgItemSource::integer() {
    Adesk::Int32 value = 0;
    ORV_NOTE_STATUS(m_filer.readInt32(&value));
    return value;
}

Adesk::Int32 DwgItemSource::magic() {
    const bool whole = m_filer.filerStatus() == Acad::eOk;
    const Adesk::Int32 value = integer();
    // What a stream in memory answers behind its end, and what the drawing file's does.
    const Acad::ErrorStatus es = m_filer.filerStatus();
    if (!whole || (es != Acad::eEndOfObject && es != Acad::eDwgObjectImproperlyRead))
        return value;
    m_filer.resetFilerStatus();
    Adesk::UInt8 left = 0;
    if (m_filer.readUInt8(&left) == Acad::eOk)
        m_filer.setFilerStatus(es); // the stream breaks off inside the number
    else
        m_filer.resetFilerStatus();
    return value;
}

double DwgItemSource::real() {
    double value = 0.0;
    ORV_NOTE_STATUS(m_filer.readDouble(&value));
    return value;
}

bool DwgItemSource::flag() {
    Adesk::Boolean value = false;
    ORV_NOTE_STATUS(m_filer.readBoolean(&value));
    return value != 0;
}

std::wstring DwgItemSource::versionText() {
    char bytes[kVersionTextBytes] = {};
    ORV_NOTE_STATUS(m_filer.readBytes(bytes, sizeof bytes));
    return widened(bytes, sizeof bytes);
}

std::string DwgItemSource::chunk() {
    ads_binary value = {0, nullptr};
    ORV_NOTE_STATUS(m_filer.readBChunk(&value));
    std::string bytes;
    if (value.clen > 0 && value.buf != nullptr)
        bytes.assign(value.buf, static_cast<std::size_t>(value.clen));
    acutDelBuffer(value.buf);
    return bytes;
}

void DwgItemTarget::versionText(const std::string& value) {
    char bytes[kVersionTextBytes] = {};
    value.copy(bytes, sizeof bytes);
    ORV_NOTE_STATUS(m_filer.writeBytes(bytes, sizeof bytes));
}

void DxfItemSource::Release::operator()(resbuf* value) const { acutRelRb(value); }

DxfItemSource::Value DxfItemSource::next(AcDb::DxfCode code) {
    Value value(acutNewRb(AcDb::kDxfInvalid));
    const Acad::ErrorStatus es = m_filer.readResBuf(value.get());
    ORV_NOTE_STATUS(es);
    if (es == Acad::eOk && value->restype == code)
        return value;
    if (es == Acad::eOk) {
        m_filer.pushBackItem();
        m_filer.setError(Acad::eInvalidDxfCode, L"group code %d where %d is due",
                         static_cast<int>(value->restype), static_cast<int>(code));
    } else {
        m_filer.setError(Acad::eMissingDxfField, L"the object ends where group code %d is due",
                         static_cast<int>(code));
    }
    return nullptr;
}

std::wstring DxfItemSource::textOf(AcDb::DxfCode code) {
    const Value value = next(code);
    return value != nullptr && value->resval.rstring != nullptr ? value->resval.rstring : std::wstring();
}

Adesk::Int32 DxfItemSource::integer() {
    const Value value = next(AcDb::kDxfInt32);
    return value != nullptr ? value->resval.rlong : 0;
}

bool DxfItemSource::isAtEnd() { return m_filer.atEndOfObject() && !m_filer.atEOF(); }

Adesk::Int32 DxfItemSource::magic() { return isAtEnd() ? 0 : integer(); }

void DxfItemSource::textFormMark() {
    if (isAtEnd())
        return;
    const Value passed(acutNewRb(AcDb::kDxfInvalid));
    const Acad::ErrorStatus es = m_filer.readResBuf(passed.get());
    ORV_NOTE_STATUS(es);
    if (es != Acad::eOk)
        m_filer.setError(Acad::eMissingDxfField, L"the object ends where group code %d is due",
                         static_cast<int>(AcDb::kDxfInt32));
}

double DxfItemSource::real() {
    const Value value = next(AcDb::kDxfReal);
    return value != nullptr ? value->resval.rreal : 0.0;
}

std::string DxfItemSource::chunk() {
    const Value value = next(AcDb::kDxfBinaryChunk);
    if (value == nullptr || value->resval.rbinary.clen <= 0)
        return {};
    return {value->resval.rbinary.buf, static_cast<std::size_t>(value->resval.rbinary.clen)};
}

void DxfItemTarget::versionText(const std::string& value) {
    const std::wstring text = widened(value.c_str(), std::min(value.size(), kVersionTextBytes));
    ORV_NOTE_STATUS(m_filer.writeString(AcDb::kDxfXTextString, text.c_str()));
}

} // namespace orv::detail
