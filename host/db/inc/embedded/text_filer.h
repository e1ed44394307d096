#pragma once

#include "dbfiler.h"

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace embedded {

namespace text {
struct Group;
class GroupReader;
class GroupWriter;
} // namespace text

// The two forms of group codes: lines of text, or packed bytes behind a sentinel.
enum class TextForm { kAscii, kBinary };

// Files group codes to and from bytes in memory. Which form is read follows from how the bytes begin.
class TextFiler : public AcDbDxfFiler {
public:
    // Writes to the end of `bytes`, which must outlive the filer.
    TextFiler(TextForm form, std::string& bytes, AcDbDatabase* database = nullptr);
    // Reads bytes, which must outlive the filer. Whatever they are, reading ends in values or in a failure:
    // eInvalidDxfCode, eBadDxfSequence, with a message that tells line or offset, eEndOfObject where they
    // break off.
    explicit TextFiler(std::string_view bytes, AcDbDatabase* database = nullptr);
    ~TextFiler() override;

    int rewindFiler() override;
    Acad::ErrorStatus filerStatus() const override { return m_status; }
    void resetFilerStatus() override;
    Acad::ErrorStatus setError(Acad::ErrorStatus es, const ACHAR* format, ...) override;
    Acad::ErrorStatus setError(const ACHAR* format, ...) override;
    const ACHAR* errorMessage() const override { return m_message.c_str(); }
    AcDb::FilerType filerType() const override { return AcDb::kFileFiler; }
    AcDbDatabase* database() const override { return m_database; }
    int precision() const override { return m_precision; }
    void setPrecision(int digits) override;

    Acad::ErrorStatus readResBuf(resbuf* value) override;
    Acad::ErrorStatus writeResBuf(const resbuf& value) override;
    Acad::ErrorStatus writeObjectId(AcDb::DxfCode code, const AcDbObjectId& id) override;
    Acad::ErrorStatus writeInt8(AcDb::DxfCode code, Adesk::Int8 value) override;
    Acad::ErrorStatus writeString(AcDb::DxfCode code, const ACHAR* text) override;
    Acad::ErrorStatus writeString(AcDb::DxfCode code, const AcString& text) override;
    Acad::ErrorStatus writeBChunk(AcDb::DxfCode code, const ads_binary& chunk) override;
    Acad::ErrorStatus writeAcDbHandle(AcDb::DxfCode code, const AcDbHandle& handle) override;
    Acad::ErrorStatus writeInt64(AcDb::DxfCode code, Adesk::Int64 value) override;
    Acad::ErrorStatus writeInt32(AcDb::DxfCode code, Adesk::Int32 value) override;
    Acad::ErrorStatus writeInt16(AcDb::DxfCode code, Adesk::Int16 value) override;
    Acad::ErrorStatus writeUInt8(AcDb::DxfCode code, Adesk::UInt8 value) override;
    Acad::ErrorStatus writeUInt16(AcDb::DxfCode code, Adesk::UInt16 value) override;
    Acad::ErrorStatus writeUInt32(AcDb::DxfCode code, Adesk::UInt32 value) override;
    Acad::ErrorStatus writeUInt64(AcDb::DxfCode code, Adesk::UInt64 value) override;
    Acad::ErrorStatus writeBoolean(AcDb::DxfCode code, Adesk::Boolean value) override;
    Acad::ErrorStatus writeBool(AcDb::DxfCode code, bool value) override;
    Acad::ErrorStatus writeDouble(AcDb::DxfCode code, double value, int digits = kDfltPrec) override;
    Acad::ErrorStatus writePoint2d(AcDb::DxfCode code, const AcGePoint2d& value,
                                   int digits = kDfltPrec) override;
    Acad::ErrorStatus writePoint3d(AcDb::DxfCode code, const AcGePoint3d& value,
                                   int digits = kDfltPrec) override;
    Acad::ErrorStatus writeVector2d(AcDb::DxfCode code, const AcGeVector2d& value,
                                    int digits = kDfltPrec) override;
    Acad::ErrorStatus writeVector3d(AcDb::DxfCode code, const AcGeVector3d& value,
                                    int digits = kDfltPrec) override;
    Acad::ErrorStatus writeScale3d(AcDb::DxfCode code, const AcGeScale3d& value,
                                   int digits = kDfltPrec) override;

    Adesk::Boolean atEOF() override;
    Adesk::Boolean atEndOfObject() override;
    Adesk::Boolean atExtendedData() override;
    Adesk::Boolean atSubclassData(const ACHAR* className) override;
    Adesk::Boolean atEmbeddedObjectStart() override;
    void pushBackItem() override;
    void writeXDataStart() override;
    Acad::ErrorStatus writeEmbeddedObjectStart() override;

    // The text of the group 0 that comes next, and passes it. Empty, and nothing is passed, if another group
    // comes.
    std::wstring passObjectStart();
    // Passes what is left before the next group 0. False if there was nothing but extended data.
    bool skipToObjectStart();

private:
    using Groups = std::deque<text::Group>;

    // The group that is `index` ahead; null at the end of the bytes and where they are damaged.
    const text::Group* peek(std::size_t index = 0);
    const text::Group* failedPeek();
    void take(std::size_t count);
    bool atText(int code, const ACHAR* text);
    Acad::ErrorStatus endOfObject(resbuf* value);
    std::size_t readPoint(resbuf& value);
    void readValue(resbuf& value);
    AcDbObjectId idOf(Adesk::UInt64 handle) const;

    bool begin(AcDb::DxfCode code, text::Group& group);
    template <class Set>
    Acad::ErrorStatus put(AcDb::DxfCode code, int digits, Set set);
    Acad::ErrorStatus writeInteger(AcDb::DxfCode code, Adesk::Int64 value, bool isUnsigned);
    Acad::ErrorStatus writeCoordinates(AcDb::DxfCode code, const double* values, int count, int digits);
    Acad::ErrorStatus writeIdResBuf(AcDb::DxfCode code, const resbuf& value);
    int digitsOf(int digits) const { return digits == kDfltPrec ? m_precision : digits; }

    AcDbDatabase* m_database;
    std::unique_ptr<text::GroupWriter> m_writer; // one of the two is there
    std::unique_ptr<text::GroupReader> m_reader;
    std::unique_ptr<Groups> m_ahead; // read from the bytes and not yet given out
    std::unique_ptr<Groups> m_given; // the groups of the value that was read last
    bool m_missedEnd = false;
    int m_precision = kDfltPrec;
    Acad::ErrorStatus m_status = Acad::eOk;
    std::wstring m_message;
};

} // namespace embedded
