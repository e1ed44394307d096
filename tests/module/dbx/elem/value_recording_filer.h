#pragma once

#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "support/recording_filer.h"

#include <deque>
#include <sstream>
#include <string>

namespace testing_support {

// A recording filer that shows points, vectors and ids as well ("writePoint3d 1 2 3", "writeSoftPointerId
// 2a"), and that can be fed them and texts. Those come from lists of their own.
class ValueRecordingFiler : public RecordingFiler {
public:
    std::deque<AcGePoint3d> points;
    std::deque<AcDbObjectId> ids;
    std::deque<std::wstring> texts;

    Acad::ErrorStatus writePoint3d(const AcGePoint3d& value) override {
        return shown(RecordingFiler::writePoint3d(value), value);
    }
    Acad::ErrorStatus writeVector3d(const AcGeVector3d& value) override {
        return shown(RecordingFiler::writeVector3d(value), value);
    }
    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override {
        const Acad::ErrorStatus es = RecordingFiler::writeSoftPointerId(id);
        std::ostringstream line;
        line << "writeSoftPointerId " << std::hex << id.asOldId();
        calls.back() = line.str();
        return es;
    }

    // What a failing read leaves behind is no zero here, so that it is seen who makes it one.
    Acad::ErrorStatus readPoint3d(AcGePoint3d* value) override {
        const Acad::ErrorStatus es = RecordingFiler::readPoint3d(value);
        return take(points, *value, AcGePoint3d(9, 9, 9), es);
    }
    Acad::ErrorStatus readVector3d(AcGeVector3d* value) override {
        AcGePoint3d read;
        const Acad::ErrorStatus es =
            take(points, read, AcGePoint3d(9, 9, 9), RecordingFiler::readVector3d(value));
        *value = read.asVector();
        return es;
    }
    Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) override {
        AcDbObjectId read;
        const Acad::ErrorStatus es = take(ids, read, AcDbObjectId(), RecordingFiler::readSoftPointerId(id));
        *id = read;
        return es;
    }
    Acad::ErrorStatus readString(AcString& text) override {
        std::wstring read;
        const Acad::ErrorStatus es =
            take(texts, read, std::wstring(L"left behind"), RecordingFiler::readString(text));
        text = read.c_str();
        return es;
    }
    using RecordingFiler::readString;

private:
    template <class Value>
    Acad::ErrorStatus shown(Acad::ErrorStatus es, const Value& value) {
        std::ostringstream line;
        line << calls.back() << ' ' << value.x << ' ' << value.y << ' ' << value.z;
        calls.back() = line.str();
        return es;
    }
    template <class Value>
    Acad::ErrorStatus take(std::deque<Value>& fed, Value& value, const Value& leftBehind,
                           Acad::ErrorStatus es) {
        value = leftBehind;
        if (es != Acad::eOk)
            return es;
        if (fed.empty()) {
            setFilerStatus(Acad::eEndOfObject);
            return Acad::eEndOfObject;
        }
        value = fed.front();
        fed.pop_front();
        return es;
    }
};

// An id for calls that only hand ids on; there is nothing behind it to open.
inline AcDbObjectId idOf(Adesk::IntPtr number) { return AcDbObjectId().setFromOldId(number); }

inline bool exactlyEqual(const AcGePoint3d& a, const AcGePoint3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}
inline bool exactlyEqual(const AcGeVector3d& a, const AcGeVector3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

} // namespace testing_support
