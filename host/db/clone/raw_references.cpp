#include "db/clone/raw_references.h"

#include "db/database_core.h"
#include "db/object_access.h"
#include "db/text/group_types.h"
#include "dbxrecrd.h"

namespace embedded {

namespace {

constexpr std::size_t kHandleSize = 8;

// Takes a run of bytes apart; nothing is read past its end.
class RawBytes {
public:
    explicit RawBytes(std::vector<std::uint8_t>& bytes) : m_bytes(bytes) {}

    bool atEnd() const { return m_failed || m_at >= m_bytes.size(); }
    std::uint8_t byte() { return take(1) ? m_bytes[m_at - 1] : 0; }
    unsigned littleShort() {
        const unsigned low = byte();
        return low | static_cast<unsigned>(byte()) << 8;
    }
    void skip(std::size_t count) { take(count); }
    // The place of a handle, which is passed; null if it is not there whole.
    std::uint8_t* handle() { return take(kHandleSize) ? &m_bytes[m_at - kHandleSize] : nullptr; }
    void fail() { m_failed = true; }

private:
    bool take(std::size_t count) {
        if (m_failed || count > m_bytes.size() - m_at) {
            m_failed = true;
            return false;
        }
        m_at += count;
        return true;
    }

    std::vector<std::uint8_t>& m_bytes;
    std::size_t m_at = 0;
    bool m_failed = false;
};

struct RawHandle {
    std::uint8_t* place;
    bool littleEndian;
    Strength strength;

    std::uint64_t read() const {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < kHandleSize; ++i)
            value = value << 8 | place[littleEndian ? kHandleSize - 1 - i : i];
        return value;
    }
    void write(std::uint64_t value) const {
        for (std::size_t i = 0; i < kHandleSize; ++i, value >>= 8)
            place[littleEndian ? i : kHandleSize - 1 - i] = static_cast<std::uint8_t>(value);
    }
};

// 330 soft pointers, 340 hard pointers, 350 soft owners, 360 hard owners.
Strength strengthOfCode(int code) {
    constexpr Strength kByTen[] = {Strength::kSoftPointer, Strength::kHardPointer, Strength::kSoftOwner,
                                   Strength::kHardOwner};
    return code >= 330 && code < 370 ? kByTen[(code - 330) / 10] : Strength::kHardPointer;
}

// Passes one value of an xrecord; a handle that stands for itself is no reference.
template <class Visit>
void passValue(RawBytes& in, int code, Visit visit) {
    switch (text::groupTypeOf(code)) {
    case text::GroupType::kText: {
        const unsigned length = in.littleShort();
        in.skip(1 + length); // with the code page
        break;
    }
    case text::GroupType::kReal:
        in.skip(text::beginsPoint(code) ? 24 : 8);
        break;
    case text::GroupType::kInt16:
        in.skip(code >= 280 && code < 290 ? 1 : 2);
        break;
    case text::GroupType::kInt32:
        in.skip(4);
        break;
    case text::GroupType::kSwitch:
        in.skip(1);
        break;
    case text::GroupType::kChunk:
        in.skip(in.byte());
        break;
    case text::GroupType::kInt64:
    case text::GroupType::kHandle:
        in.skip(kHandleSize);
        break;
    case text::GroupType::kObjectId:
        if (std::uint8_t* place = in.handle())
            visit(RawHandle{place, true, strengthOfCode(code)});
        break;
    default:
        in.fail();
    }
}

template <class Visit>
void visitRecord(std::vector<std::uint8_t>& data, Visit visit) {
    RawBytes in(data);
    while (!in.atEnd()) {
        const int code = static_cast<int>(in.littleShort());
        passValue(in, code, visit);
    }
}

// What follows the first byte of each value of extended data, which is its code without the thousand. The
// handle of a layer is that of something that is needed, the others are those of neighbours.
template <class Visit>
void visitExtended(std::vector<std::uint8_t>& data, Visit visit) {
    RawBytes in(data);
    while (!in.atEnd()) {
        const unsigned code = in.byte();
        if (code == 0) {
            const unsigned length = in.byte();
            in.skip(2 + length); // with the code page
        } else if (code == 2) {
            in.skip(1);
        } else if (code == 3 || code == 5) {
            if (std::uint8_t* place = in.handle())
                visit(RawHandle{place, false, code == 3 ? Strength::kHardPointer : Strength::kSoftPointer});
        } else if (code == 4) {
            in.skip(in.byte());
        } else if (code >= 10 && code < 20) {
            in.skip(24);
        } else if (code >= 40 && code < 50) {
            in.skip(8);
        } else if (code == 70) {
            in.skip(2);
        } else if (code == 71) {
            in.skip(4);
        } else {
            in.fail();
        }
    }
}

// Visits all of an object, the bytes of a record in the copy that is given.
template <class Visit>
void visitHandles(const AcDbObject& object, std::vector<std::uint8_t>& record, Visit visit) {
    if (!record.empty())
        visitRecord(record, visit);
    if (ObjectExtras* extras = ObjectAccess::extras(object))
        for (ExtendedData& data : extras->extendedData)
            visitExtended(data.bytes, visit);
}

// Most entities have neither extended data nor bytes of a record.
bool mayHaveRawHandles(const AcDbObject& object) {
    return ObjectAccess::extras(object) != nullptr || AcDbEntity::cast(&object) == nullptr;
}

std::vector<std::uint8_t> recordBytes(const AcDbObject& object) {
    const auto* record = AcDbXrecord::cast(&object);
    return record != nullptr ? record->rawData() : std::vector<std::uint8_t>();
}

} // namespace

void gatherRawReferences(const AcDbObject& object, std::vector<FiledReference>& references) {
    const DatabaseCore* core = coreOf(object.objectId());
    if (core == nullptr || !mayHaveRawHandles(object))
        return;
    std::vector<std::uint8_t> record = recordBytes(object);
    visitHandles(object, record, [&](const RawHandle& handle) {
        const AcDbObjectId id(core->stubs().find(handle.read()));
        if (!id.isNull())
            references.push_back({id, handle.strength});
    });
}

void translateRawReferences(AcDbObject& clone, const AcDbObjectId& own, const Translate& translate) {
    const DatabaseCore* core = coreOf(own);
    if (core == nullptr || !mayHaveRawHandles(clone))
        return;
    std::vector<std::uint8_t> record = recordBytes(clone);
    visitHandles(clone, record, [&](const RawHandle& handle) {
        const AcDbObjectId id(core->stubs().find(handle.read()));
        const AcDbStub* target = id.isNull() ? nullptr : translate(id, handle.strength);
        handle.write(target != nullptr ? target->handle : 0);
    });
    if (auto* changed = AcDbXrecord::cast(&clone); changed != nullptr && !record.empty())
        changed->setRawData(record);
}

} // namespace embedded
