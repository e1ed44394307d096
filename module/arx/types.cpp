#include "arx/types.h"

#include "acestext.h"
#include "base/assert.h"

namespace orv {

bool checkErrorStatus(Acad::ErrorStatus es, Acad::ErrorStatus es2, const char* expression, const char* file,
                      int line) {
    ORV_ASSERT(es == es2)(expression)(acadErrorStatusText(es))(acadErrorStatusText(es2))(file)(line);
    return es == es2;
}

} // namespace orv
