#include "acutads.h"
#include "acutmem.h"
#include "adsdef.h"
#include "db/text/group_types.h"

using embedded::text::GroupType;
using embedded::text::groupTypeOf;

resbuf* acutNewRb(int code) {
    auto* const value = new resbuf;
    value->restype = static_cast<short>(code);
    return value;
}

int acutRelRb(resbuf* chain) {
    while (chain != nullptr) {
        resbuf* const next = chain->rbnext;
        const GroupType type = groupTypeOf(chain->restype);
        if (type == GroupType::kText || type == GroupType::kHandle)
            acutDelString(chain->resval.rstring);
        else if (type == GroupType::kChunk)
            acutDelBuffer(chain->resval.rbinary.buf);
        delete chain;
        chain = next;
    }
    return RTNORM;
}
