#include "cli/common/open_object.h"

#include "cli/common/failure.h"

#include "acestext.h"
#include "platform/text.h"

namespace taldork::cli {

std::string statusText(Acad::ErrorStatus status) {
    const ACHAR* const text = acadErrorStatusText(status);
    return text != nullptr ? platform::toUtf8(text) : "status " + std::to_string(status);
}

void requireOpen(Acad::ErrorStatus status, AcDb::OpenMode mode, const std::string& file,
                 const std::string& what) {
    if (status != Acad::eOk)
        throw Failure(file, what + " cannot be " + (mode == AcDb::kForWrite ? "changed" : "read") + ": " +
                                statusText(status));
}

} // namespace taldork::cli
