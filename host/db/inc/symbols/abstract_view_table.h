#pragma once

#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "symbols/symbol_table.h"

// What saved views and viewports have in common: from where and how one looks at the drawing.
class AcDbAbstractViewTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbAbstractViewTableRecord);

    // Setters need write. Lengths in drawing units, angles in radians.
    double height() const;
    void setHeight(double height);
    double width() const;
    void setWidth(double width);
    // In the coordinates of the view.
    AcGePoint2d centerPoint() const;
    void setCenterPoint(const AcGePoint2d& point);
    AcGePoint3d target() const;
    void setTarget(const AcGePoint3d& point);
    // From the target to the eye.
    AcGeVector3d viewDirection() const;
    void setViewDirection(const AcGeVector3d& direction);
    double viewTwist() const;
    void setViewTwist(double angle);
    // Millimetres.
    double lensLength() const;
    void setLensLength(double length);
    double frontClipDistance() const;
    void setFrontClipDistance(double distance);
    double backClipDistance() const;
    void setBackClipDistance(double distance);
    bool perspectiveEnabled() const;
    void setPerspectiveEnabled(bool enabled);
    bool frontClipEnabled() const;
    void setFrontClipEnabled(bool enabled);
    bool backClipEnabled() const;
    void setBackClipEnabled(bool enabled);
    bool frontClipAtEye() const;
    void setFrontClipAtEye(bool atEye);
    Adesk::UInt8 renderMode() const;
    void setRenderMode(Adesk::UInt8 mode);

    // The coordinate system of the view.
    void getUcs(AcGePoint3d& origin, AcGeVector3d& xAxis, AcGeVector3d& yAxis) const;
    void setUcs(const AcGePoint3d& origin, const AcGeVector3d& xAxis, const AcGeVector3d& yAxis);
    double elevation() const;
    void setElevation(double elevation);
    // The named one that it was taken from, or null.
    AcDbObjectId ucsName() const;

protected:
    AcDbAbstractViewTableRecord();

    enum ViewModeBits : Adesk::UInt8 {
        kPerspective = 8,
        kFrontClip = 4,
        kBackClip = 2,
        kFrontClipNotAtEye = 1
    };

    struct View {
        double height = 1.0;
        double width = 1.0;
        AcGePoint2d center;
        AcGePoint3d target;
        AcGeVector3d direction{0.0, 0.0, 1.0};
        double twist = 0.0;
        double lensLength = 50.0;
        double frontClip = 0.0;
        double backClip = 0.0;
        Adesk::UInt8 mode = kFrontClipNotAtEye;
        Adesk::UInt8 renderMode = 0;
    };
    struct Ucs {
        AcGePoint3d origin;
        AcGeVector3d xAxis{1.0, 0.0, 0.0};
        AcGeVector3d yAxis{0.0, 1.0, 0.0};
        double elevation = 0.0;
        Adesk::UInt16 orthographic = 0;
        AcDbObjectId named, base;
    };
    View m_view;
    Ucs m_ucs;

private:
    void setMode(Adesk::UInt8 bit, bool on);
};
