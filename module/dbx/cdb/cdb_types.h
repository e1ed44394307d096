#pragma once

// The enumerations have a fixed width, since values come from other modules, and any may come.
namespace orv::cdb {

// What a store answers. The numbers are known to other modules.
enum cd_error_t : int {
    CD_ERR_NONE = 0,
    CD_ERR_TRUNCATED =
        1,            // read: the buffer holds only the beginning, the length argument the record's full size
    CD_ERR_EMPTY = 2, // read: the record has no bytes
    CD_ERR_NOTFOUND = 3, // no such key, group, position or store
    CD_ERR_REMOVE = 5,   // the container refused to remove a group
    CD_ERR_FAILED = 99   // the store cannot do it at all
};

// How `read` and `write` step the position. Any other value acts as kSameRecord.
enum CdbReadWriteMode : int {
    kFirstRecord = 0, // to 0; `write` first deletes the whole key
    kNextRecord = 1,  // one further
    kSameRecord = -1  // stays
};

enum CdbLockMode : int { kSharedLocking = 0 };

// Kinds of store.
enum CdbType : int {
    kNodCdb = 0,   // in the drawing
    kPlainCdb = 1, // known by name only; other modules bring its creator
    kFileCdb = 2   // the project's store file; other modules bring its creator
};

} // namespace orv::cdb
