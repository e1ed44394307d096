#pragma once

#include "base/export.h"
#include "base/tr1_memory.h"

#include "dbid.h"

#include <boost/function.hpp>
#include <boost/optional.hpp>

class AcDbDatabase;

namespace orv::numbering {

// Numbers of one kind of element: which number an element has, which element a number has, and which number
// comes next. A snapshot of the drawing at the time of `acquire`; of later changes it learns only through its
// own operations, and it writes nothing into the drawing. Copies share one table. It holds ids and no
// objects, so it may outlive the drawing. For the host's main thread.
struct TALDORK_API NumberingBucket {
    // The number that is stored on an element; none if the element is not of this bucket.
    using Callback = boost::function<boost::optional<int>(const AcDbObjectId&)>;

    // A fresh bucket from the model space of the host's working drawing, whatever `db` is: the callback is
    // asked for each entity that is not erased, in the order of ids. Of two elements with one number both
    // keep it, the number leads to the first, and that is reported. A drawing that cannot be walked gives
    // what was found until then. What the callback throws comes out of here; an empty one throws
    // boost::bad_function_call at the first entity. Opens every entity: take one bucket for many elements.
    //
    // Within a transaction that runs already, all of model space stays open for read until that ends, and
    // until then is opened for write through a transaction only. Whoever wants to change elements otherwise
    // takes the bucket before the transaction.
    static std::tr1::shared_ptr<NumberingBucket> acquire(AcDbDatabase* db, Callback callback);

    NumberingBucket(const NumberingBucket& other);
    NumberingBucket& operator=(const NumberingBucket& other);
    ~NumberingBucket();

    // What `getOrCreateNo` would give to an unknown element: 1 more than the number of the element with the
    // greatest id, 1 in an empty bucket. That is not the greatest number, and it may be taken. Changes
    // nothing.
    int nextFreeNo();
    // The element that a number leads to, which may have been erased since.
    boost::optional<AcDbObjectId> getIdByNo(int no);
    // Enters a number for an element. False, with a report, for an element that has one: it keeps that. True
    // for a number that is taken too, again with a report: the element has it from now on, and the number
    // still leads to the older one.
    bool allocate(const AcDbObjectId& id, int no);
    // The element's number. One that is unknown gets `nextFreeNo`, with the same report if that is taken.
    // Always a number.
    boost::optional<int> getOrCreateNo(const AcDbObjectId& id);

private:
    struct Impl;

    NumberingBucket();

    std::tr1::shared_ptr<Impl> m_impl;
};

} // namespace orv::numbering
