#pragma once

#include "dbhandle.h"
#include "dbid.h"
#include "support/recording_filer.h"

#include <cstdio>
#include <deque>
#include <string>
#include <utility>

// Also tells which ids and names are written, and answers reads of them.
class SelectionFiler : public testing_support::RecordingFiler {
public:
    SelectionFiler() { type = AcDb::kFileFiler; }

    template <class T>
    SelectionFiler& feed(T number) {
        RecordingFiler::feed(number);
        return *this;
    }
    SelectionFiler& feedId(const AcDbObjectId& id) {
        m_ids.push_back(id);
        return *this;
    }
    SelectionFiler& feedName(std::wstring name) {
        m_names.push_back(std::move(name));
        return *this;
    }
    bool allTaken() const { return allRead() && m_ids.empty() && m_names.empty(); }

    Acad::ErrorStatus writeSoftPointerId(const AcDbSoftPointerId& id) override {
        const Acad::ErrorStatus es = RecordingFiler::writeSoftPointerId(id);
        calls.back() = lineOf(id);
        return es;
    }
    Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) override {
        const Acad::ErrorStatus es = RecordingFiler::readSoftPointerId(id);
        return es == Acad::eOk ? take(m_ids, *id) : es;
    }
    using RecordingFiler::readString;
    Acad::ErrorStatus readString(AcString& text) override {
        const Acad::ErrorStatus es = RecordingFiler::readString(text);
        std::wstring name;
        if (es != Acad::eOk || take(m_names, name) != Acad::eOk)
            return filerStatus();
        text = name.c_str();
        return es;
    }

    // What is written down of an id.
    static std::string lineOf(const AcDbObjectId& id) {
        if (id.isNull())
            return "writeSoftPointerId null";
        char handle[17];
        std::snprintf(handle, sizeof handle, "%llX",
                      static_cast<unsigned long long>(static_cast<Adesk::UInt64>(id.handle())));
        return std::string("writeSoftPointerId ") + handle;
    }

private:
    template <class T, class Value>
    Acad::ErrorStatus take(std::deque<T>& fed, Value& value) {
        if (fed.empty()) {
            setFilerStatus(Acad::eEndOfObject);
            return filerStatus();
        }
        value = fed.front();
        fed.pop_front();
        return Acad::eOk;
    }

    std::deque<AcDbObjectId> m_ids;
    std::deque<std::wstring> m_names;
};
