#pragma once

#include "gepnt3d.h"
#include "gevec3d.h"
#include "support/recording_filer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

using Lines = std::vector<std::string>;

// A stream as one line for each call: "UInt32 5", "Bool true", "String orv.base", "Bytes 01 02 ff", "Double
// 0.5", "Point3d 1 2 3", "HardPointerId 2a", "SoftPointerId null". Writing appends lines. Reading takes them
// in order; a read of another kind than the line's fails the test. So one list of lines shows both ways.
//
// From the call that `failAt` names on, by its number from 0, every call fails with `failure`, or just that
// one with `failsOnce`; a failed call neither writes nor takes a line, and what it reads is zero.
class ScriptFiler : public RecordingFiler {
public:
    Lines lines;
    std::size_t next = 0;
    int callCount = 0;
    bool failsOnce = false;
    // Writes ids by their handles ("HardPointerId #2b"), which stay the same from file to file.
    bool showsHandles = false;

    ScriptFiler() = default;
    explicit ScriptFiler(Lines script) : lines(std::move(script)) {}

    bool isAtEnd() const { return next == lines.size(); }

#define SCRIPTED_ID(Kind)                                                                                    \
    Acad::ErrorStatus read##Kind(AcDb##Kind* id) override {                                                  \
        std::string text;                                                                                    \
        const Acad::ErrorStatus es = take(#Kind, text);                                                      \
        *id = AcDb##Kind(AcDbObjectId().setFromOldId(std::strtoll(text.c_str(), nullptr, 16)));              \
        return es;                                                                                           \
    }                                                                                                        \
    Acad::ErrorStatus write##Kind(const AcDb##Kind& id) override { return put(#Kind, textOf(id)); }
    SCRIPTED_ID(HardPointerId)
    SCRIPTED_ID(SoftPointerId)
#undef SCRIPTED_ID

#define SCRIPTED_NUMBER(Kind, Type)                                                                          \
    Acad::ErrorStatus read##Kind(Type* value) override {                                                     \
        std::string text;                                                                                    \
        const Acad::ErrorStatus es = take(#Kind, text);                                                      \
        *value = static_cast<Type>(std::strtoll(text.c_str(), nullptr, 10));                                 \
        return es;                                                                                           \
    }                                                                                                        \
    Acad::ErrorStatus write##Kind(Type value) override { return put(#Kind, std::to_string(value)); }
    SCRIPTED_NUMBER(Int8, Adesk::Int8)
    SCRIPTED_NUMBER(Int16, Adesk::Int16)
    SCRIPTED_NUMBER(Int32, Adesk::Int32)
    SCRIPTED_NUMBER(UInt8, Adesk::UInt8)
    SCRIPTED_NUMBER(UInt16, Adesk::UInt16)
    SCRIPTED_NUMBER(UInt32, Adesk::UInt32)
#undef SCRIPTED_NUMBER

    Acad::ErrorStatus readBool(bool* value) override {
        std::string text;
        const Acad::ErrorStatus es = take("Bool", text);
        *value = text == "true";
        return es;
    }
    Acad::ErrorStatus writeBool(bool value) override { return put("Bool", value ? "true" : "false"); }

    Acad::ErrorStatus readDouble(double* value) override {
        std::string text;
        const Acad::ErrorStatus es = take("Double", text);
        *value = std::strtod(text.c_str(), nullptr);
        return es;
    }
    Acad::ErrorStatus writeDouble(double value) override { return put("Double", textOf({value})); }

    Acad::ErrorStatus readPoint3d(AcGePoint3d* value) override {
        return takeTriple("Point3d", value->x, value->y, value->z);
    }
    Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) override {
        return put("Point3d", textOf({value.x, value.y, value.z}));
    }
    Acad::ErrorStatus readVector3d(AcGeVector3d* value) override {
        return takeTriple("Vector3d", value->x, value->y, value->z);
    }
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) override {
        return put("Vector3d", textOf({value.x, value.y, value.z}));
    }

    using RecordingFiler::readString;
    Acad::ErrorStatus readString(AcString& value) override {
        std::string text;
        const Acad::ErrorStatus es = take("String", text);
        value = AcString(text.c_str());
        return es;
    }
    Acad::ErrorStatus writeString(const ACHAR* value) override {
        return put("String", AcString(value).utf8());
    }
    Acad::ErrorStatus writeString(const AcString& value) override { return put("String", value.utf8()); }

    Acad::ErrorStatus readBytes(void* bytes, Adesk::UIntPtr length) override {
        std::string text;
        Acad::ErrorStatus es = take("Bytes", text);
        std::memset(bytes, 0, length);
        std::istringstream numbers(text);
        const std::vector<std::string> hex{std::istream_iterator<std::string>(numbers), {}};
        if (es == Acad::eOk && hex.size() != length)
            setFilerStatus(es = Acad::eEndOfObject);
        for (std::size_t i = 0; es == Acad::eOk && i < length; ++i)
            static_cast<unsigned char*>(bytes)[i] =
                static_cast<unsigned char>(std::strtol(hex[i].c_str(), nullptr, 16));
        return es;
    }
    Acad::ErrorStatus writeBytes(const void* bytes, Adesk::UIntPtr length) override {
        std::string text;
        for (Adesk::UIntPtr i = 0; i < length; ++i) {
            char hex[4];
            std::snprintf(hex, sizeof hex, i == 0 ? "%02x" : " %02x",
                          static_cast<const unsigned char*>(bytes)[i]);
            text += hex;
        }
        return put("Bytes", text);
    }

private:
    // Counts the call; the status with which it goes on or ends.
    Acad::ErrorStatus begin() {
        const int number = callCount++;
        if (failsOnce && number == failAt)
            return failure;
        if (!failsOnce && failAt >= 0 && number >= failAt)
            setFilerStatus(failure);
        return filerStatus();
    }
    Acad::ErrorStatus put(const std::string& kind, const std::string& value) {
        const Acad::ErrorStatus es = begin();
        if (es == Acad::eOk)
            lines.push_back(kind + ' ' + value);
        return es;
    }
    Acad::ErrorStatus take(const std::string& kind, std::string& value) {
        Acad::ErrorStatus es = begin();
        if (es == Acad::eOk && isAtEnd())
            setFilerStatus(es = Acad::eEndOfObject);
        if (es != Acad::eOk)
            return es;
        const std::string& line = lines[next];
        if (line.compare(0, kind.size() + 1, kind + ' ') != 0) {
            ADD_FAILURE() << kind << " is read where line " << next << " of the stream is " << line;
            setFilerStatus(es = Acad::eFilerError);
            return es;
        }
        value = line.substr(kind.size() + 1);
        ++next;
        return es;
    }
    Acad::ErrorStatus takeTriple(const char* kind, double& x, double& y, double& z) {
        std::string text;
        const Acad::ErrorStatus es = take(kind, text);
        x = y = z = 0.0;
        std::istringstream(text) >> x >> y >> z;
        return es;
    }
    std::string textOf(const AcDbObjectId& id) const {
        std::ostringstream text;
        if (showsHandles)
            text << '#' << std::hex << static_cast<Adesk::UInt64>(id.handle());
        else
            text << std::hex << id.asOldId();
        return id.isNull() ? "null" : text.str();
    }
    static std::string textOf(std::initializer_list<double> numbers) {
        std::string text;
        for (const double number : numbers) {
            char digits[32];
            std::snprintf(digits, sizeof digits, text.empty() ? "%.17g" : " %.17g", number);
            text += digits;
        }
        return text;
    }
};

} // namespace testing_support
