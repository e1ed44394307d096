#include "dbx/doc/ORV_CCSysPar.h"

#include "app/class_table.h"
#include "base/product_name.h"
#include "dbx/doc/ccsys_streams.h"
#include "gevec3d.h"
#include "orvcore/get_nvec.h"
#include "orvcore/warn_on_new_version.h"
#include "platform/text.h"

#include <algorithm>
#include <cstring>
#include <iterator>

ORV_DEFINE_CLASS(ORV_CCSysPar, orv::kCCSysParRow)

namespace {

using namespace orv::detail;
namespace status = orv::status;

// Lengths count in 16-bit units, so that the same text is cut at the same place everywhere.
template <std::size_t kSize>
void setText(wchar_t (&field)[kSize], const std::wstring& text) {
    const std::u16string units = platform::toUtf16(text).substr(0, kSize);
    std::fill(std::begin(field), std::end(field), L'\0');
    platform::fromUtf16(units).copy(field, kSize);
}

template <class Char, std::size_t kSize>
std::basic_string<Char> textOf(const Char (&field)[kSize]) {
    return {std::begin(field), std::find(std::begin(field), std::end(field), Char())};
}

// A unit is the byte of its number; what is above has none.
std::string narrowed(const std::wstring& text) {
    std::string bytes;
    for (const char16_t unit : platform::toUtf16(text))
        bytes += unit <= 0xFF ? static_cast<char>(unit) : '?';
    return bytes;
}

template <std::size_t kSize>
void setCode(char (&field)[kSize], const std::wstring& text) {
    std::fill(std::begin(field), std::end(field), '\0');
    narrowed(text).copy(field, kSize);
}

template <std::size_t kSize>
std::wstring codeOf(const char (&field)[kSize]) {
    return platform::widen(textOf(field));
}

// The text that a version's bytes hold.
std::wstring cutVersion(const std::wstring& text) {
    return platform::fromUtf16(platform::toUtf16(text).substr(0, kVersionTextBytes));
}

// A state comes from a drawing and may be any number: the sum goes round.
int plus(int problem, int state) {
    return static_cast<int>(static_cast<unsigned int>(problem) + static_cast<unsigned int>(state));
}

} // namespace

ORV_CCSysPar::ORV_CCSysPar() = default;
ORV_CCSysPar::ORV_CCSysPar(const ccsys& data) : m_data(data) {}
ORV_CCSysPar::~ORV_CCSysPar() = default;

ORV_CCSysPar& ORV_CCSysPar::operator=(const ORV_CCSysPar& other) {
    if (this != &other) {
        m_data = other.m_data;
        m_binary = other.m_binary;
    }
    return *this;
}

ORV_CCSysPar::BinaryField& ORV_CCSysPar::BinaryField::operator=(const BinaryField& other) {
    if (this != &other) {
        value = other.value;
        size = other.size;
    }
    return *this;
}

void ORV_CCSysPar::BinaryField::take(const char* bytes, std::size_t length) {
    if (length > 1)
        std::memcpy(pointer, bytes, std::min(length, sizeof value));
    size = sizeof value;
}

void ORV_CCSysPar::getData(ccsys& data) const {
    assertReadEnabled();
    data = m_data;
}

void ORV_CCSysPar::setData(const ccsys& data) {
    assertWriteEnabled();
    m_data = data;
}

template <class Source>
void ORV_CCSysPar::readFixedItems(Source& source) {
    setText(m_data.text1, source.text());
    setText(m_data.projectName, source.text());
    for (Adesk::Int32* const field : {&m_data.system, &m_data.zustand, &m_data.numkn, &m_data.maxkn,
                                      &m_data.iachs, &m_data.igdiv, &m_data.int1, &m_data.norm})
        *field = source.integer();
    m_data.double1 = source.real();
    m_data.flag1 = source.flag();
    m_data.flag2 = source.flag();
    m_data.double2 = source.real();
    m_data.int2 = source.flag();
    m_data.int3 = source.integer();
    source.textFormMark();
}

template <class Source>
void ORV_CCSysPar::readItemsByVersion(Source& source, Adesk::Int32 version) {
    m_data.int2 = source.integer();
    if (version > 1)
        setCode(m_data.codeName, source.text());
    m_data.int4 = version > 2 ? source.integer() : 0;
    if (version >= 4) {
        m_data.versionText = cutVersion(source.versionText());
        const std::string chunk = source.chunk();
        m_binary.take(chunk.data(), chunk.size());
    }
    if (version >= 5)
        m_data.int5 = source.integer();
    if (version >= 6)
        setCode(m_data.codeCategory, source.text());
    if (version >= 7)
        m_data.nation = source.flag();
}

template <class Source>
Acad::ErrorStatus ORV_CCSysPar::readItems(Source& source) {
    readFixedItems(source);
    setCode(m_data.codeName, {});
    setCode(m_data.codeCategory, {});
    m_data.nation = 0;
    if (source.magic() == kMagic) {
        const Adesk::Int32 version = source.integer();
        if (version > kVersion)
            return status::kMakeProxy;
        orv_warnOnNewVersion(version, kVersion, orv::productName());
        readItemsByVersion(source, version);
    } else {
        m_data.int2 = 1;
    }
    if (m_data.codeName[0] == '\0')
        m_data.oldCodeNameFromNorm();
    m_data.chunkValue = m_binary.value;
    return source.status();
}

template <class Target>
void ORV_CCSysPar::writeVersionedItems(Target& target) const {
    target.integer(m_data.int2);
    target.text(codeOf(m_data.codeName));
    target.integer(m_data.int4);
    target.versionText(narrowed(m_data.versionText2));
    target.chunk(m_binary.chunk());
    target.integer(m_data.int5);
    target.text(codeOf(m_data.codeCategory));
    target.flag(m_data.nation != 0);
}

template <class Target>
void ORV_CCSysPar::writeItems(Target& target) const {
    target.begin();
    target.text(textOf(m_data.text1));
    target.text(textOf(m_data.projectName));
    for (const Adesk::Int32 value : {m_data.system, m_data.zustand, m_data.numkn, m_data.maxkn, m_data.iachs,
                                     m_data.igdiv, m_data.int1, m_data.norm})
        target.integer(value);
    target.real(m_data.double1);
    target.flag(m_data.flag1 != 0);
    target.flag(m_data.flag2 != 0);
    target.real(m_data.double2);
    target.flag(m_data.int2 != 0);
    target.integer(m_data.int3);
    target.textFormMark();
    target.integer(kMagic);
    target.integer(kVersion);
    writeVersionedItems(target);
}

Acad::ErrorStatus ORV_CCSysPar::dwgInFields(AcDbDwgFiler* filer) {
    try {
        assertWriteEnabled();
        AcDbObject::dwgInFields(filer);
        DwgItemSource source(*filer);
        return readItems(source);
    }
    ORV_CRITICAL_GUARD(status::kMakeProxy)
}

Acad::ErrorStatus ORV_CCSysPar::dwgOutFields(AcDbDwgFiler* filer) const {
    try {
        assertReadEnabled();
        AcDbObject::dwgOutFields(filer);
        DwgItemTarget target(*filer);
        writeItems(target);
        return target.status();
    }
    ORV_CRITICAL_GUARD(status::kFilingFailed)
}

Acad::ErrorStatus ORV_CCSysPar::dxfInFields(AcDbDxfFiler* filer) {
    try {
        assertWriteEnabled();
        AcDbObject::dxfInFields(filer);
        if (!filer->atSubclassData(L"ORV_CCSysPar"))
            return filer->filerStatus();
        DxfItemSource source(*filer);
        return readItems(source);
    }
    ORV_CRITICAL_GUARD(status::kMakeProxy)
}

Acad::ErrorStatus ORV_CCSysPar::dxfOutFields(AcDbDxfFiler* filer) const {
    try {
        assertReadEnabled();
        AcDbObject::dxfOutFields(filer);
        DxfItemTarget target(*filer);
        writeItems(target);
        return target.status();
    }
    ORV_CRITICAL_GUARD(status::kFilingFailed)
}

int ORV_CCSysPar::get_igres(orv::SYSTEM system) {
    switch (system) {
    case orv::RAUM:
        return 127;
    case orv::EBENE:
        return 35;
    case orv::PLATTE:
        return 28;
    }
    return 0;
}

int ORV_CCSysPar::get_iprob(orv::SYSTEM system, orv::ZUSTAND zustand, int flag) {
    constexpr int kPlane = 10, kPlate = 30;
    constexpr int kSeenAlongZ = 4;
    constexpr int kNoState = 9;
    constexpr int kPlateFlag = 1;
    if (system != orv::EBENE && system != orv::PLATTE)
        return 0;
    const int along = orv_get_nvec().isEqualTo(AcGeVector3d::kZAxis, AcGeContext::gTol) ? kSeenAlongZ : 0;
    if (system == orv::EBENE)
        return plus(kPlane + along, zustand == kNoState ? 0 : static_cast<int>(zustand));
    return kPlate + along + (flag & kPlateFlag);
}
