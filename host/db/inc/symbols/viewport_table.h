#pragma once

#include "symbols/abstract_view_table.h"

// One of the tiles in which model space is shown. Those of one arrangement have one name, "*Active" for the
// present.
class AcDbViewportTableRecord : public AcDbAbstractViewTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord);
    AcDbViewportTableRecord();

    // In parts of the screen. Setters need write.
    AcGePoint2d lowerLeftCorner() const;
    void setLowerLeftCorner(const AcGePoint2d& point);
    AcGePoint2d upperRightCorner() const;
    void setUpperRightCorner(const AcGePoint2d& point);
    Adesk::UInt16 circleSides() const;
    Acad::ErrorStatus setCircleSides(Adesk::UInt16 sides);
    bool ucsFollowMode() const;
    void setUcsFollowMode(bool follow);
    bool iconEnabled() const;
    void setIconEnabled(bool enabled);
    bool iconAtOrigin() const;
    void setIconAtOrigin(bool atOrigin);
    bool gridEnabled() const;
    void setGridEnabled(bool enabled);
    AcGePoint2d gridIncrements() const;
    void setGridIncrements(const AcGePoint2d& steps);
    bool snapEnabled() const;
    void setSnapEnabled(bool enabled);
    AcGePoint2d snapBase() const;
    void setSnapBase(const AcGePoint2d& point);
    AcGePoint2d snapIncrements() const;
    void setSnapIncrements(const AcGePoint2d& steps);
    double snapAngle() const;
    void setSnapAngle(double angle);
    bool isUcsSavedWithViewport() const;
    void setUcsPerViewport(bool saved);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Fields {
        AcGePoint2d lowerLeft;
        AcGePoint2d upperRight{1.0, 1.0};
        bool ucsFollow = false;
        Adesk::UInt16 circleSides = 1000;
        bool fastZoom = true;
        bool iconEnabled = true;
        bool iconAtOrigin = true;
        bool gridEnabled = false;
        AcGePoint2d gridIncrements{0.5, 0.5};
        bool snapEnabled = false;
        bool snapIsometric = false;
        Adesk::UInt16 snapPair = 0;
        double snapAngle = 0.0;
        AcGePoint2d snapBase;
        AcGePoint2d snapIncrements{0.5, 0.5};
        bool ucsAtOrigin = false;
        bool ucsPerViewport = true;
    };
    Fields m_fields;
};

class AcDbViewportTableIterator : public embedded::TypedSymbolIterator<AcDbViewportTableRecord> {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewportTableIterator);
    using TypedSymbolIterator::TypedSymbolIterator;
};

class AcDbViewportTable
    : public embedded::TypedSymbolTable<AcDbViewportTableRecord, AcDbViewportTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewportTable);
    AcDbViewportTable();

protected:
    // The tiles of an arrangement share its name.
    bool allowsSameNames() const override { return true; }
};
