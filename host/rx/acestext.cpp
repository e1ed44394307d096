#include "acestext.h"

const ACHAR* acadErrorStatusText(Acad::ErrorStatus es) {
    switch (es) {
#define ACAD_STATUS(name, number)                                                                            \
    case Acad::name:                                                                                         \
        return ACRX_T(#name);
#include "acad_statuses.inc"
#undef ACAD_STATUS
    }
    return nullptr;
}
