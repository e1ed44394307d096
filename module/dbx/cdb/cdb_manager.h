#pragma once

#include "base/export.h"
#include "dbx/cdb/icdb.h"

#include <boost/function.hpp>
#include <boost/noncopyable.hpp>
#include <boost/shared_ptr.hpp>

#include <string>

namespace orv::cdb {

// The open stores by name and kind, shared and counted. The key knows no drawing: as long as an entry is
// there, every drawing that asks gets the same store. So a store is to be closed before its drawing goes.
class TALDORK_API CdbManager : boost::noncopyable {
public:
    // Makes a store and opens it. Empty if that is impossible; a store that is not there is given back
    // unopened.
    using Creator = boost::function<boost::shared_ptr<ICdb>(const std::wstring& name, CdbLockMode lockMode)>;

    // The one object, made by the first call; it and the stores that are left in it go at the end of the
    // process. If it could not be made this is reported, and there is nothing to be used.
    static CdbManager& instance();
    ~CdbManager();

    // The first creator of a kind stays; a second one is reported.
    void regCreator(CdbType type, Creator creator);

    // The store that is registered, or a new one, which is registered with count 1. Empty, with a report, if
    // there is no creator or it made nothing. A store that could not be opened is reported when it is made,
    // and registered.
    boost::shared_ptr<ICdb> open(const std::wstring& name, CdbType type, CdbLockMode lockMode);
    // A new store that the manager does not know of. Empty as the creator says, or with a report if there is
    // none.
    boost::shared_ptr<ICdb> createOnly(const std::wstring& name, CdbType type, CdbLockMode lockMode);
    // Gives one count back; the last one takes the entry out. The store lives on as long as somebody holds
    // it. Does nothing for a pair that is not registered. Who hears of a store's end may call the manager:
    // the entry is out by then.
    void close(const std::wstring& name, CdbType type);
    // Forgets all stores, whatever their counts, and keeps the creators. All entries are out before the first
    // store ends.
    void closeAll();

private:
    struct State;

    CdbManager();
    const Creator* findCreator(CdbType type) const;
    const Creator* findCreatorFor(CdbType type, const std::wstring& name) const;

    State* m_state;
};

} // namespace orv::cdb
