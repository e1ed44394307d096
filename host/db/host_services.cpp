#include "dbapserv.h"

#include "embedded/host_release.h"
#include "rxboiler.h"
#include "rxclass.h"

#include <utility>

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbHostApplicationServices, AcRxObject)

namespace {

embedded::HostRelease s_release;

} // namespace

int AcDbHostApplicationServices::releaseMajorVersion() const { return s_release.major; }

int AcDbHostApplicationServices::releaseMinorVersion() const { return s_release.minor; }

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static AcDbHostApplicationServices services;
    return &services;
}

embedded::HostRelease embedded::setHostRelease(const HostRelease& release) {
    return std::exchange(s_release, release);
}
