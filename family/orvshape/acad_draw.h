#pragma once

#include "acgi.h"
#include "orvshape/export.h"

#include <string>
#include <vector>

namespace orv {

// Drawing as elements need it, over the host's draw: one call for what takes several there. Points and
// vectors are those of the drawable (model coordinates). Lives no longer than the draw that it wraps.
class ORVSHAPE_API AcadCommonDraw {
public:
    virtual ~AcadCommonDraw() = default;

    AcadCommonDraw(const AcadCommonDraw&) = delete;
    AcadCommonDraw& operator=(const AcadCommonDraw&) = delete;

    AcGiCommonDraw& commonDraw() const { return m_draw; }
    AcGiGeometry& geometry() const { return m_geometry; }
    AcGiSubEntityTraits& subEntityTraits() const;

    // True if the host wants whoever draws to stop; so of all that draws.
    bool line(const AcGePoint3d& from, const AcGePoint3d& to) const;
    // Filled if the fill type of the traits says so; so are polygons. A radius that is not above 0 and a
    // normal without length draw nothing.
    bool circle(const AcGePoint3d& centre, double radius, const AcGeVector3d& normal) const;
    // Closed by itself. Fewer than two points draw nothing.
    bool polygon(const std::vector<AcGePoint3d>& corners) const;

    // Takes the line type of that name in the table of the drawing that is drawn, or else of the working one.
    // False, with the line type as it was, if there is none.
    bool lineType(const std::wstring& name) const;

    // One line of text along the direction, in the plane across the normal, of the size and at the place of
    // the two settings below. %% codes are read. An empty text, a direction or normal without length, or a
    // direction along the normal draws nothing.
    bool text(const AcGePoint3d& point, const std::wstring& string, const AcGeVector3d& direction,
              const AcGeVector3d& normal) const;
    // The same with the normal from which whoever looks can read it: the viewer in a viewport, else from the
    // Z axis.
    bool text(const AcGePoint3d& point, const std::wstring& string, const AcGeVector3d& direction) const;
    // How long the text would be in drawing units, as the host measures it.
    double textWidth(const std::wstring& string) const;

    // The height of letters in drawing units; 1 at the start. What is not above 0 is left alone.
    void textSize(double size);
    double textSize() const { return m_textSize; }
    // Which place of the text comes to the point. Three rows of three: 1 to 3 top left, centre and right, 4
    // to 6 middle, 7 to 9 the base line. 7 at the start. Other numbers are left alone.
    void textAttachment(int attachment);
    int textAttachment() const { return m_textAttachment; }

protected:
    AcadCommonDraw(AcGiCommonDraw& draw, AcGiGeometry& geometry) : m_draw(draw), m_geometry(geometry) {}

    virtual AcGeVector3d facingNormal() const;

private:
    AcGiCommonDraw& m_draw;
    AcGiGeometry& m_geometry;
    double m_textSize = 1.0;
    int m_textAttachment = 7;
};

// Over the draw of what looks the same from everywhere.
class ORVSHAPE_API AcadWorldDraw : public AcadCommonDraw {
public:
    explicit AcadWorldDraw(AcGiWorldDraw& draw);

    AcGiWorldDraw& worldDraw() const { return m_draw; }

private:
    AcGiWorldDraw& m_draw;
};

// Over the draw for one viewport.
class ORVSHAPE_API AcadViewportDraw : public AcadCommonDraw {
public:
    explicit AcadViewportDraw(AcGiViewportDraw& draw);

    AcGiViewportDraw& viewportDraw() const { return m_draw; }

    // Of length 1: towards the viewer, to the right, and up on the screen.
    AcGeVector3d viewDir() const;
    AcGeVector3d viewRight() const;
    AcGeVector3d viewUp() const;

protected:
    // Inside of a mirrored block that is away from the viewer: there the letters are turned about.
    AcGeVector3d facingNormal() const override { return viewRight().crossProduct(viewUp()); }

private:
    AcGeVector3d axisOfEye(const AcGeVector3d& axis) const;

    AcGiViewportDraw& m_draw;
};

} // namespace orv
