#include "dbplhldr.h"

AcDbPlaceHolder::AcDbPlaceHolder() = default;
