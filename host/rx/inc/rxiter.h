#pragma once

#include "rxobject.h"

// Walks a collection of run-time objects. The caller deletes it.
class AcRxIterator : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcRxIterator);

    virtual bool done() const = 0;
    // True if there is a further element.
    virtual bool next() = 0;
    // The present element, still the collection's; null when done.
    virtual AcRxObject* object() const = 0;
};
