#pragma once

#include "base/export.h"
#include "dbx/cdb/cdb_types.h"

#include <boost/noncopyable.hpp>

#include <cstddef>
#include <set>
#include <string>

namespace orv::cdb {

// A record store. Under a key, the pair of `kwh` (the group, never negative) and `kwl` (the entry in the
// group), lies a sequence of records; the one at position 0 is the key's header. A store keeps one position
// for reading and writing, which even a `const` read moves, so nobody else may use it during a walk over a
// sequence. Stores are owned through boost::shared_ptr and used from the host's main thread.
//
// The order of the virtual operations is known to other modules. A compiler that groups overloads in its
// table of virtual operations puts the two forms of getUpdateNo in the opposite order; those modules are
// built with the same.
struct TALDORK_API ICdb : boost::noncopyable {
    // A store closes itself.
    virtual ~ICdb();

    // Binds the object to the store of that name. CD_ERR_NOTFOUND if there is none; the object stays usable
    // for another try.
    virtual cd_error_t open(const std::wstring& name, CdbLockMode lockMode) = 0;
    // True while the store can be used: after an `open` that found it, until `close` or the end of what it
    // stands on.
    virtual bool isOpen() const = 0;
    // Unbinds the object; CD_ERR_NONE also if it was not open.
    virtual cd_error_t close() = 0;

    // Steps `kwl` to the group's next key in ascending order. A walk starts from any value below the first
    // key and ends with CD_ERR_NOTFOUND; so does a step from a value that is no key (any more) and not below
    // the first.
    virtual cd_error_t getNextKey(int& kwh, int& kwl) const = 0;
    // Add the group's entries to `keys`, which is not cleared. CD_ERR_NOTFOUND if the group is missing.
    virtual cd_error_t getKeysForKwh(int kwh, std::set<int>& keys) const = 0;
    // The same for kwlFrom <= kwl <= kwlTo.
    virtual cd_error_t getKeysForKwhAndRange(int kwh, std::set<int>& keys, int kwlFrom, int kwlTo) const = 0;
    // Whether there is such a key. Does not move the position.
    virtual bool exists(int kwh, int kwl) const = 0;

    // Take the lock of a key and give it back; the key need not exist. CD_ERR_NONE, or what refuses it. A
    // store that other means protect takes none and answers CD_ERR_NONE.
    virtual cd_error_t lock(int kwh, int kwl) = 0;
    virtual cd_error_t unlock(int kwh, int kwl) = 0;

    // Steps the position and delivers a record of n bytes. `len` is the buffer's size on entry and n on
    // return; 0 on entry means n, so who passes 0 and a buffer vouches for its size. `data` may be null to
    // ask for the size. CD_ERR_EMPTY if there is nothing to copy; CD_ERR_TRUNCATED if `len` was below n.
    virtual cd_error_t read(int kwh, int kwl, void* data, std::size_t& len, CdbReadWriteMode mode) const = 0;
    // Steps the position and stores `len` bytes there; `data` is not null and `len` above 0.
    virtual cd_error_t write(int kwh, int kwl, const void* data, std::size_t len, CdbReadWriteMode mode) = 0;
    // Removes a key with all its records, or with a negative `kwl` the whole group.
    virtual cd_error_t del(int kwh, int kwl) = 0;

    // -1 unless the store says otherwise.
    virtual int getIndex() const;
    // Numbers that change whenever the key's content, or the store's, changes. Only compared for equality. -1
    // for ever from a store that does not count.
    virtual int getUpdateNo(int kwh, int kwl) const;
    virtual int getUpdateNo() const;
};

namespace detail {

// getNextKey on the listed keys of a group.
TALDORK_API cd_error_t stepKey(const std::set<int>& keys, int& kwl);

// The end of `read` for a record that has been found: copies and answers as its contract says.
TALDORK_API cd_error_t deliverRecord(const void* record, std::size_t size, void* data, std::size_t& len);

} // namespace detail
} // namespace orv::cdb
