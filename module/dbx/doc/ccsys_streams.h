#pragma once

#include "base/dbx/inc/orvrxuti_dbx.h"

#include "adsdef.h"
#include "dbfiler.h"

#include <memory>
#include <string>

// The binary filer and the one of group codes as streams of the same items. The operations bear the names of
// the kinds of item; each is one call of the filer, or one group.
namespace orv::detail {

// Bytes that a version's text has in the binary form.
constexpr std::size_t kVersionTextBytes = 132;
// Stands before the magic in the form of group codes. Nobody looks at it.
constexpr Adesk::Int32 kTextFormMark = 30071996;

class DwgItemSource {
public:
    explicit DwgItemSource(AcDbDwgFiler& filer) : m_filer(filer) {}

    std::wstring text();
    Adesk::Int32 integer();
    // 0 if the object ends here, which is no failure: the oldest ones do.
    Adesk::Int32 magic();
    double real();
    bool flag();
    // One byte for each character.
    std::wstring versionText();
    std::string chunk();
    void textFormMark() {}
    Acad::ErrorStatus status() const { return m_filer.filerStatus(); }

private:
    AcDbDwgFiler& m_filer;
};

class DwgItemTarget {
public:
    explicit DwgItemTarget(AcDbDwgFiler& filer) : m_filer(filer) {}

    void begin() {}
    void text(const std::wstring& value) { ORV_NOTE_STATUS(m_filer.writeString(value.c_str())); }
    void integer(Adesk::Int32 value) { ORV_NOTE_STATUS(m_filer.writeInt32(value)); }
    void real(double value) { ORV_NOTE_STATUS(m_filer.writeDouble(value)); }
    void flag(bool value) { ORV_NOTE_STATUS(m_filer.writeBoolean(value)); }
    void versionText(const std::string& value);
    void chunk(const ads_binary& value) { ORV_NOTE_STATUS(m_filer.writeBChunk(value)); }
    void textFormMark() {}
    Acad::ErrorStatus status() const { return m_filer.filerStatus(); }

private:
    AcDbDwgFiler& m_filer;
};

// A group of another code than the one that is due, and an object that ends too early, are failures of the
// filer.
class DxfItemSource {
public:
    explicit DxfItemSource(AcDbDxfFiler& filer) : m_filer(filer) {}

    std::wstring text() { return textOf(AcDb::kDxfText); }
    Adesk::Int32 integer();
    // 0 if the object ends here, which is no failure: the oldest ones do.
    Adesk::Int32 magic();
    double real();
    bool flag() { return integer() != 0; }
    std::wstring versionText() { return textOf(AcDb::kDxfXTextString); }
    std::string chunk();
    // Whatever stands there; nothing if the object ends here, as the oldest ones do.
    void textFormMark();
    Acad::ErrorStatus status() const { return m_filer.filerStatus(); }

private:
    struct Release {
        void operator()(resbuf* value) const;
    };
    using Value = std::unique_ptr<resbuf, Release>;

    // Behind the object's last group, with another one in the stream.
    bool isAtEnd();
    // Null after a failure.
    Value next(AcDb::DxfCode code);
    std::wstring textOf(AcDb::DxfCode code);

    AcDbDxfFiler& m_filer;
};

class DxfItemTarget {
public:
    explicit DxfItemTarget(AcDbDxfFiler& filer) : m_filer(filer) {}

    // Not the class's name: a reader does not find what is written here.
    void begin() { ORV_NOTE_STATUS(m_filer.writeItem(AcDb::kDxfSubclass, true)); }
    void text(const std::wstring& value) {
        ORV_NOTE_STATUS(m_filer.writeString(AcDb::kDxfText, value.c_str()));
    }
    void integer(Adesk::Int32 value) { ORV_NOTE_STATUS(m_filer.writeInt32(AcDb::kDxfInt32, value)); }
    void real(double value) { ORV_NOTE_STATUS(m_filer.writeDouble(AcDb::kDxfReal, value)); }
    void flag(bool value) { ORV_NOTE_STATUS(m_filer.writeBoolean(AcDb::kDxfInt32, value)); }
    void versionText(const std::string& value);
    void chunk(const ads_binary& value) {
        ORV_NOTE_STATUS(m_filer.writeBChunk(AcDb::kDxfBinaryChunk, value));
    }
    void textFormMark() { integer(kTextFormMark); }
    Acad::ErrorStatus status() const { return m_filer.filerStatus(); }

private:
    AcDbDxfFiler& m_filer;
};

} // namespace orv::detail
