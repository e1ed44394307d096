#pragma once

#include "AcString.h"
#include "acutmem.h"
#include "dbx/doc/ORV_CCSysPar.h"
#include "embedded/memory_filer.h"
#include "support/recording_filer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <cwchar>
#include <deque>
#include <string>
#include <vector>

namespace testing_support {

template <std::size_t kSize>
void setCode(char (&field)[kSize], const char* text) {
    std::strncpy(field, text, kSize);
}

// A value in every field that is filed, each another one.
inline ccsys sampleData() {
    ccsys data;
    std::wcscpy(data.text1, L"First \u00e4");
    std::wcscpy(data.projectName, L"Br\u00fccke");
    data.system = 1;
    data.zustand = 9;
    data.numkn = 120;
    data.maxkn = 345;
    data.iachs = -2;
    data.igdiv = 5000;
    data.int1 = -77;
    data.norm = 3;
    data.double1 = 1.5;
    data.flag1 = 1;
    data.flag2 = 0;
    data.double2 = -0.1;
    data.int2 = 6;
    data.int3 = 33;
    setCode(data.codeName, "EC_2-2004");
    setCode(data.codeCategory, "B");
    data.nation = 1;
    data.int4 = 44;
    data.versionText2 = L"11.50\u00a0b";
    data.int5 = 55;
    return data;
}

inline ccsys dataOf(const ORV_CCSysPar& object) {
    ccsys data;
    object.getData(data);
    return data;
}

template <class Char, std::size_t kSize>
std::basic_string<Char> fieldText(const Char (&field)[kSize]) {
    std::size_t length = 0;
    while (length < kSize && field[length] != Char())
        ++length;
    return {field, length};
}

// The fields that are filed and read back; the version text goes another way.
inline void expectSame(const ccsys& left, const ccsys& right) {
    EXPECT_EQ(fieldText(left.text1), fieldText(right.text1));
    EXPECT_EQ(fieldText(left.projectName), fieldText(right.projectName));
    const std::vector<Adesk::Int32 ccsys::*> numbers = {
        &ccsys::system, &ccsys::zustand, &ccsys::numkn, &ccsys::maxkn, &ccsys::iachs,
        &ccsys::igdiv,  &ccsys::int1,    &ccsys::norm,  &ccsys::flag1, &ccsys::flag2,
        &ccsys::int2,   &ccsys::int3,    &ccsys::int4,  &ccsys::int5,  &ccsys::nation};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        EXPECT_EQ(left.*numbers[i], right.*numbers[i]) << "number " << i;
    EXPECT_EQ(std::memcmp(&left.double1, &right.double1, sizeof(double)), 0);
    EXPECT_EQ(std::memcmp(&left.double2, &right.double2, sizeof(double)), 0);
    EXPECT_EQ(fieldText(left.codeName), fieldText(right.codeName));
    EXPECT_EQ(fieldText(left.codeCategory), fieldText(right.codeCategory));
}

// Also writes down texts and chunks, and answers reads of them.
class SysParFiler : public RecordingFiler {
public:
    SysParFiler() { type = AcDb::kFileFiler; }

    template <class T>
    SysParFiler& feed(T number) {
        RecordingFiler::feed(number);
        return *this;
    }
    SysParFiler& feedBytes(const std::string& bytes) {
        RecordingFiler::feedBytes(bytes);
        return *this;
    }
    SysParFiler& feedText(std::wstring text) {
        m_texts.push_back(std::move(text));
        return *this;
    }
    SysParFiler& feedChunk(std::string bytes) {
        m_chunks.push_back(std::move(bytes));
        return *this;
    }
    bool allTaken() const { return allRead() && m_texts.empty() && m_chunks.empty(); }

    using RecordingFiler::readString;
    Acad::ErrorStatus readString(AcString& text) override {
        text.setEmpty();
        const Acad::ErrorStatus es = RecordingFiler::readString(text);
        if (es == Acad::eOk && !m_texts.empty()) {
            text = m_texts.front().c_str();
            m_texts.pop_front();
        }
        return es;
    }
    Acad::ErrorStatus readBChunk(ads_binary* chunk) override {
        *chunk = {0, nullptr};
        const Acad::ErrorStatus es = RecordingFiler::readBChunk(chunk);
        if (es != Acad::eOk || m_chunks.empty())
            return es;
        chunk->clen = static_cast<short>(m_chunks.front().size());
        chunk->buf = static_cast<char*>(acutNewBuffer(m_chunks.front().size() + 1));
        m_chunks.front().copy(chunk->buf, m_chunks.front().size());
        m_chunks.pop_front();
        return es;
    }
    Acad::ErrorStatus writeBChunk(const ads_binary& chunk) override {
        const Acad::ErrorStatus es = RecordingFiler::writeBChunk(chunk);
        calls.back() += " " + std::to_string(chunk.clen) + ":";
        for (short i = 0; i < chunk.clen; ++i) {
            char hex[4];
            std::snprintf(hex, sizeof hex, " %02x", static_cast<unsigned char>(chunk.buf[i]));
            calls.back() += hex;
        }
        return es;
    }

private:
    std::deque<std::wstring> m_texts;
    std::deque<std::string> m_chunks;
};

// What a drawing has of an object with sampleData, up to the items of a version; version 0 is from the time
// before there were any.
inline void feedSample(SysParFiler& filer, int version,
                       const std::string& chunk = std::string("\4\3\2\1", 4)) {
    const ccsys data = sampleData();
    filer.feedText(data.text1).feedText(data.projectName);
    for (const Adesk::Int32 value :
         {data.system, data.zustand, data.numkn, data.maxkn, data.iachs, data.igdiv, data.int1, data.norm})
        filer.feed<Adesk::Int32>(value);
    filer.feed(data.double1).feed<Adesk::Boolean>(true).feed<Adesk::Boolean>(false).feed(data.double2);
    filer.feed<Adesk::Boolean>(true).feed<Adesk::Int32>(data.int3);
    if (version == 0) {
        filer.feed<Adesk::Int32>(4711);
        return;
    }
    filer.feed<Adesk::Int32>(123456789).feed<Adesk::Int32>(version).feed<Adesk::Int32>(data.int2);
    if (version >= 2)
        filer.feedText(L"EC_2-2004");
    if (version >= 3)
        filer.feed<Adesk::Int32>(data.int4);
    if (version >= 4) {
        std::string text(132, '\0');
        text.replace(0, 5, "11.50");
        filer.feedBytes(text).feedChunk(chunk);
    }
    if (version >= 5)
        filer.feed<Adesk::Int32>(data.int5);
    if (version >= 6)
        filer.feedText(L"B");
    if (version >= 7)
        filer.feed<Adesk::Boolean>(true);
}

// Reading is the only way to a value in the binary field.
inline void readBinaryField(ORV_CCSysPar& object, Adesk::Int32 value) {
    SysParFiler filer;
    feedSample(filer, 7, std::string(reinterpret_cast<const char*>(&value), sizeof value));
    EXPECT_EQ(object.dwgInFields(&filer), Acad::eOk);
}

// As it is filed.
inline Adesk::Int32 binaryFieldOf(const ORV_CCSysPar& object) {
    class ChunkTaker : public RecordingFiler {
    public:
        ChunkTaker() { type = AcDb::kFileFiler; }
        Acad::ErrorStatus writeBChunk(const ads_binary& chunk) override {
            EXPECT_EQ(chunk.clen, 4);
            std::memcpy(&value, chunk.buf, sizeof value);
            return RecordingFiler::writeBChunk(chunk);
        }
        Adesk::Int32 value = 0;
    };
    ChunkTaker filer;
    EXPECT_EQ(object.dwgOutFields(&filer), Acad::eOk);
    return filer.value;
}

} // namespace testing_support
