#pragma once

#include "symbols/symbol_table.h"

// A layer and the settings that its entities take from it.
class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);
    AcDbLayerTableRecord();

    // Setters need write and answer eOk unless something else is said.
    bool isFrozen() const;
    Acad::ErrorStatus setIsFrozen(bool frozen);
    bool isOff() const;
    void setIsOff(bool off);
    // Frozen in viewports that are made from now on.
    bool VPDFLT() const;
    void setVPDFLT(bool frozen);
    bool isLocked() const;
    void setIsLocked(bool locked);
    bool isPlottable() const;
    // eInvalidInput for making layer "DEFPOINTS" plottable.
    Acad::ErrorStatus setIsPlottable(bool plottable);
    bool isInUse() const;

    // 1 to 255.
    Adesk::UInt16 colorIndex() const;
    // eInvalidInput for another number.
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index);
    AcDbObjectId linetypeObjectId() const;
    // eInvalidInput for what is no line type of the same drawing.
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId id);
    AcDb::LineWeight lineWeight() const;
    // eInvalidInput for a weight that drawings don't have.
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);
    AcDbObjectId plotStyleNameId() const;
    Acad::ErrorStatus setPlotStyleName(const AcDbObjectId& id);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    bool bit(Adesk::UInt16 mask) const;
    void setBit(Adesk::UInt16 mask, bool on);

    struct Fields {
        Adesk::UInt16 values;
        Adesk::UInt16 colour = 7;
        AcDbObjectId plotStyle;
        AcDbObjectId linetype;
    };
    Fields m_fields;
};

EMBEDDED_DECLARE_SYMBOL_TABLE(AcDbLayerTable, AcDbLayerTableRecord);
