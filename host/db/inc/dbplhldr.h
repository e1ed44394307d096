#pragma once

#include "dbmain.h"

// Stands in a dictionary for something that is kept elsewhere, such as a plot style of a style table.
class AcDbPlaceHolder : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbPlaceHolder);
    AcDbPlaceHolder();
};
