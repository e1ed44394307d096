#include "base/product_name.h"

namespace orv {

const CString& productName() {
    static const CString s_name(L"Taldork.ARX");
    return s_name;
}

} // namespace orv
