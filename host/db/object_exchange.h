#pragma once

#include "db/stub.h"

namespace embedded {

// What stays where it is when the objects of two ids change places.
struct ExchangeKeeps {
    bool extendedData = false;
    bool extensionDictionary = false;
};

// Makes the objects of two ids of one database change places. Owner and persistent reactors stay with the
// ids, since they belong to what leads there; how the objects are open goes with them, and what they own
// learns its owner's new id. Both must be live. Done twice it is undone.
void exchangeObjects(AcDbStub& first, AcDbStub& second, ExchangeKeeps keeps);

} // namespace embedded
