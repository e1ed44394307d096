#include "dbapserv.h"

#include "rxboiler.h"
#include "rxclass.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbHostApplicationServices, AcRxObject)

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static AcDbHostApplicationServices services;
    return &services;
}
