#pragma once

#include "AcString.h"
#include "dbfiler.h"

#include <cstdio>
#include <cstring>
#include <deque>
#include <string>
#include <type_traits>
#include <vector>

namespace testing_support {

// Writes down each call as one line ("writeUInt32 1", "writeBytes 3: 01 02 ff"), and answers reads with what
// it was fed, in order. From the call that `failAt` names on, by its number from 0, every call fails with
// `failure`. An exception is thrown instead if `throwAt` names a call.
class RecordingFiler : public AcDbDwgFiler {
public:
    std::vector<std::string> calls;
    int failAt = -1;
    int throwAt = -1;
    Acad::ErrorStatus failure = Acad::eFilerError;
    AcDb::FilerType type = AcDb::kBagFiler;

    // Numbers and bytes for the reads to come.
    template <class T>
    RecordingFiler& feed(T number) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(&number);
        m_fed.emplace_back(bytes, bytes + sizeof number);
        return *this;
    }
    RecordingFiler& feedBytes(const std::string& bytes) {
        m_fed.emplace_back(bytes.begin(), bytes.end());
        return *this;
    }
    bool allRead() const { return m_fed.empty(); }

    Acad::ErrorStatus filerStatus() const override { return m_status; }
    AcDb::FilerType filerType() const override { return type; }
    void setFilerStatus(Acad::ErrorStatus es) override { m_status = es; }
    void resetFilerStatus() override { m_status = Acad::eOk; }

#define RECORDED_ID(Kind)                                                                                    \
    Acad::ErrorStatus read##Kind(AcDb##Kind* id) override { return readId("read" #Kind, *id); }              \
    Acad::ErrorStatus write##Kind(const AcDb##Kind& id) override { return writeId("write" #Kind, id); }
    RECORDED_ID(HardOwnershipId)
    RECORDED_ID(HardPointerId)
    RECORDED_ID(SoftOwnershipId)
    RECORDED_ID(SoftPointerId)
#undef RECORDED_ID

#define RECORDED_NUMBER(Name, Type)                                                                          \
    Acad::ErrorStatus read##Name(Type* value) override { return readNumber("read" #Name, *value); }          \
    Acad::ErrorStatus write##Name(Type value) override { return writeNumber("write" #Name, value); }
    RECORDED_NUMBER(Int8, Adesk::Int8)
    RECORDED_NUMBER(Int16, Adesk::Int16)
    RECORDED_NUMBER(Int32, Adesk::Int32)
    RECORDED_NUMBER(Int64, Adesk::Int64)
    RECORDED_NUMBER(UInt8, Adesk::UInt8)
    RECORDED_NUMBER(UInt16, Adesk::UInt16)
    RECORDED_NUMBER(UInt32, Adesk::UInt32)
    RECORDED_NUMBER(UInt64, Adesk::UInt64)
    RECORDED_NUMBER(Boolean, Adesk::Boolean)
    RECORDED_NUMBER(Bool, bool)
    RECORDED_NUMBER(Double, double)
#undef RECORDED_NUMBER

#define RECORDED_UNUSED(Name, Type)                                                                          \
    Acad::ErrorStatus read##Name(Type*) override { return note("read" #Name); }                              \
    Acad::ErrorStatus write##Name(const Type&) override { return note("write" #Name); }
    RECORDED_UNUSED(Point2d, AcGePoint2d)
    RECORDED_UNUSED(Point3d, AcGePoint3d)
    RECORDED_UNUSED(Vector2d, AcGeVector2d)
    RECORDED_UNUSED(Vector3d, AcGeVector3d)
    RECORDED_UNUSED(Scale3d, AcGeScale3d)
    RECORDED_UNUSED(BChunk, ads_binary)
    RECORDED_UNUSED(AcDbHandle, AcDbHandle)
#undef RECORDED_UNUSED

    Acad::ErrorStatus readString(ACHAR**) override { return note("readString"); }
    Acad::ErrorStatus writeString(const ACHAR* text) override {
        return note("writeString " + AcString(text).utf8());
    }
    Acad::ErrorStatus readString(AcString&) override { return note("readString"); }
    Acad::ErrorStatus writeString(const AcString& text) override {
        return note("writeString " + text.utf8());
    }
    Acad::ErrorStatus readAddress(void**) override { return note("readAddress"); }
    Acad::ErrorStatus writeAddress(const void*) override { return note("writeAddress"); }
    Acad::ErrorStatus seek(Adesk::Int64, int) override { return note("seek"); }
    Adesk::Int64 tell() const override { return 0; }

    Acad::ErrorStatus readBytes(void* bytes, Adesk::UIntPtr length) override {
        const Acad::ErrorStatus es = note("readBytes " + std::to_string(length));
        return es == Acad::eOk ? take(bytes, length) : es;
    }
    Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UIntPtr length) override {
        std::string line = "writeBytes " + std::to_string(length) + ":";
        for (Adesk::UIntPtr i = 0; i < length && i < 32; ++i) {
            char hex[4];
            std::snprintf(hex, sizeof hex, " %02x", static_cast<const unsigned char*>(bytes)[i]);
            line += hex;
        }
        return note(line);
    }

private:
    Acad::ErrorStatus note(const std::string& line) {
        const int number = static_cast<int>(calls.size());
        calls.push_back(line);
        if (number == throwAt)
            throw 4711;
        if (failAt >= 0 && number >= failAt)
            m_status = failure;
        return m_status;
    }
    template <class T>
    Acad::ErrorStatus writeNumber(const char* name, T value) {
        return note(std::string(name) + " " + std::to_string(value));
    }
    template <class T>
    Acad::ErrorStatus readNumber(const char* name, T& value) {
        value = T();
        const Acad::ErrorStatus es = note(name);
        return es == Acad::eOk ? take(&value, sizeof value) : es;
    }
    template <class Id>
    Acad::ErrorStatus readId(const char* name, Id& id) {
        id.setNull();
        return note(name);
    }
    Acad::ErrorStatus writeId(const char* name, const AcDbObjectId& id) {
        return note(std::string(name) + (id.isNull() ? " null" : " set"));
    }
    Acad::ErrorStatus take(void* bytes, std::size_t length) {
        if (length == 0)
            return m_status;
        if (m_fed.empty() || m_fed.front().size() != length)
            return m_status = Acad::eEndOfObject;
        std::memcpy(bytes, m_fed.front().data(), length);
        m_fed.pop_front();
        return m_status;
    }

    Acad::ErrorStatus m_status = Acad::eOk;
    std::deque<std::vector<unsigned char>> m_fed;
};

} // namespace testing_support
