#pragma once

#include "symbols/symbol_table.h"

#include <vector>

// A dimension style: the variables that decide how dimensions look. For each variable ("DIMTXT") there is an
// operation that reads it (dimtxt) and one that sets it (setDimtxt); setting needs write and answers eOk.
// Texts are the record's until they change.
class AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTableRecord);
    AcDbDimStyleTableRecord();

#define DIM_ACCESS(type, name, Name)                                                                         \
    type name() const;                                                                                       \
    Acad::ErrorStatus set##Name(type value);
#define DIM_REAL(name, Name, initial) DIM_ACCESS(double, name, Name)
#define DIM_FLAG(name, Name, initial) DIM_ACCESS(bool, name, Name)
#define DIM_INT16(name, Name, initial) DIM_ACCESS(int, name, Name)
#define DIM_COLOUR(name, Name, initial) DIM_ACCESS(Adesk::UInt16, name, Name)
#define DIM_TEXT(name, Name) DIM_ACCESS(const ACHAR*, name, Name)
#define DIM_ID(name, Name) DIM_ACCESS(AcDbObjectId, name, Name)
#include "symbols/dim_variables.inc"
#undef DIM_ACCESS

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Fields {
#define DIM_REAL(name, Name, initial) double name = initial;
#define DIM_FLAG(name, Name, initial) bool name = initial;
#define DIM_INT16(name, Name, initial) Adesk::UInt16 name = static_cast<Adesk::UInt16>(initial);
#define DIM_COLOUR(name, Name, initial) Adesk::UInt16 name = initial;
#define DIM_TEXT(name, Name) AcString name;
#define DIM_ID(name, Name) AcDbObjectId name;
#include "symbols/dim_variables.inc"
        // A bit of the file whose use is not known.
        bool mark = false;
    };
    Fields m_fields;
};

class AcDbDimStyleTableIterator : public embedded::TypedSymbolIterator<AcDbDimStyleTableRecord> {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTableIterator);
    using TypedSymbolIterator::TypedSymbolIterator;
};

class AcDbDimStyleTable
    : public embedded::TypedSymbolTable<AcDbDimStyleTableRecord, AcDbDimStyleTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTable);
    AcDbDimStyleTable();

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    // Styles that the file names a second time, for a reason that is not known. Only those that are in the
    // table.
    std::vector<AcDbObjectId> m_named;
};
