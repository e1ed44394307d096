#include "dbx/elem/property.h"

namespace orv {

property_base::~property_base() = default;

} // namespace orv
