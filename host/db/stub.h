#pragma once

#include "adesk.h"

#include <cstdint>

class AcDbDatabase;
class AcDbObject;

namespace embedded {

class DatabaseCore;

// Tells for the whole life of the process whether a database is still there. Stubs point here, not at the
// database.
struct DatabaseTag {
    std::uint64_t serial; // in the order of making, from 1
    DatabaseCore* core;   // null once the database has gone
};

enum StubBits : std::uint32_t {
    kReadersMask = 0x1FF, // number of opens for read, 0 to 256
    kOpenForWrite = 1u << 9,
    kOpenForNotify = 1u << 10,
    kErased = 1u << 11,
    kPermanentlyErased = 1u << 12,
    kDirty = 1u << 13,         // differs from its bytes in the drawing that was read: is filed anew on save
    kInTransaction = 1u << 14, // one of the opens is a transaction's
    kStandIn = 1u << 15,       // the live object is a proxy that a registered class could replace
    kLoadFailed = 1u << 16, // the reader refused the bytes; they stay, and the status is in the core's table
    kUsed = 1u << 17,       // names an object; a slot without it is free
    kNewSinceOpen = 1u << 18,     // added to the database during the present open
    kWrittenSinceOpen = 1u << 19, // assertWriteEnabled passed during the present open
    kUndoing = 1u << 20,          // an undo or redo is putting a state back
    kLoading = 1u << 21,          // the object is being made from its bytes: its writes are no changes
    kEraseToggled = 1u << 22,     // erased or brought back during the present open
    kStateSinceOpen = 1u << 23, // its state was taken down for undo during the present open, before a change
    // What lasts as long as an opening for write.
    kOpenMarks = kNewSinceOpen | kWrittenSinceOpen | kEraseToggled | kStateSinceOpen
};

constexpr std::uint32_t kMaxReaders = 256;
constexpr std::uint32_t kNoFileIndex = 0xFFFFFFFFu;

} // namespace embedded

// What an id points at. Slots stand in pages that are never freed, so that a kept id can always be asked.
class AcDbStub {
public:
    AcDbObject* object = nullptr; // null while the object is bytes, or gone
    embedded::DatabaseTag* tag = nullptr;
    std::uint64_t handle = 0;
    std::uint32_t bits = 0;
    std::uint32_t fileIndex = embedded::kNoFileIndex; // of the object source; kNoFileIndex for a new object

    bool has(std::uint32_t bit) const { return (bits & bit) != 0; }
    void set(std::uint32_t bit) { bits |= bit; }
    void clear(std::uint32_t bit) { bits &= ~bit; }
    std::uint32_t readers() const { return bits & embedded::kReadersMask; }
    bool isOpen() const {
        return (bits & (embedded::kReadersMask | embedded::kOpenForWrite | embedded::kOpenForNotify)) != 0;
    }
};
