#include "dbhatch.h"

#include "db/entities/entity_parts.h"
#include "db/entities/hatch_filing.h"
#include "db/entities/hatch_picture.h"
#include "db/hatch/hatch_patterns.h"
#include "geplane.h"

#include <algorithm>
#include <cmath>

using namespace embedded;

namespace {

bool areFinite(const AcGePoint2dArray& vertices, const AcGeDoubleArray& bulges) {
    return std::all_of(vertices.begin(), vertices.end(),
                       [](const AcGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); }) &&
           std::all_of(bulges.begin(), bulges.end(), [](double bulge) { return std::isfinite(bulge); });
}

// A circle has two corners, all else needs three.
bool hasArea(const AcGePoint2dArray& vertices, const AcGeDoubleArray& bulges) {
    std::size_t different = 0;
    for (int i = 0; i < vertices.length() && different < 3; ++i) {
        bool isNew = true;
        for (int before = std::max(0, i - 2); before < i; ++before)
            isNew = isNew && vertices[before] != vertices[i];
        different += isNew ? 1 : 0;
    }
    const bool isRound = std::any_of(bulges.begin(), bulges.end(), [](double bulge) { return bulge != 0.0; });
    return different >= (isRound ? 2u : 3u);
}

Acad::ErrorStatus newLoop(Adesk::Int32 type, const AcGePoint2dArray& vertices, const AcGeDoubleArray& bulges,
                          HatchLoop& loop) {
    const int count = vertices.length();
    if ((bulges.length() != 0 && bulges.length() != count) || !areFinite(vertices, bulges))
        return Acad::eInvalidInput;
    if (!hasArea(vertices, bulges))
        return Acad::eDegenerateGeometry;
    loop.type = static_cast<Adesk::UInt32>(type) | AcDbHatch::kPolyline;
    loop.vertices.assign(vertices.begin(), vertices.end());
    loop.hasBulges = bulges.length() != 0;
    loop.bulges.assign(bulges.begin(), bulges.end());
    // A last vertex on the first one is the same corner told twice.
    if (count > 2 && loop.vertices.front() == loop.vertices.back()) {
        loop.vertices.pop_back();
        if (loop.hasBulges)
            loop.bulges.pop_back();
    }
    return Acad::eOk;
}

// What a damaged drawing has for a scale or a distance may be none.
double orOne(double told) { return std::isfinite(told) && told > 0.0 ? told : 1.0; }

bool isIndex(int index, std::size_t count) { return index >= 0 && static_cast<std::size_t>(index) < count; }

} // namespace

AcDbHatch::AcDbHatch() : m_fields(std::make_unique<HatchFields>()) {}
AcDbHatch::~AcDbHatch() = default;

void AcDbHatch::changed() {
    assertWriteEnabled();
    m_picture.reset();
}

AcGeVector3d AcDbHatch::normal() const { return readField(*this, m_fields->normal); }

Acad::ErrorStatus AcDbHatch::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength())
        return Acad::eInvalidInput;
    return setField(*this, m_fields->normal, normal.normal());
}

double AcDbHatch::elevation() const { return readField(*this, m_fields->elevation); }

Acad::ErrorStatus AcDbHatch::setElevation(double elevation) {
    return setField(*this, m_fields->elevation, elevation);
}

bool AcDbHatch::associative() const { return readField(*this, m_fields->isAssociative); }

Acad::ErrorStatus AcDbHatch::setAssociative(bool isAssociative) {
    return setField(*this, m_fields->isAssociative, isAssociative);
}

AcDbHatch::HatchPatternType AcDbHatch::patternType() const {
    assertReadEnabled();
    return static_cast<HatchPatternType>(m_fields->patternType);
}

const ACHAR* AcDbHatch::patternName() const {
    assertReadEnabled();
    return m_fields->name.kACharPtr();
}

Acad::ErrorStatus AcDbHatch::setPattern(HatchPatternType type, const ACHAR* name) {
    const HatchPattern* pattern = type == kPreDefined && name != nullptr ? hatchPattern(name) : nullptr;
    if (name == nullptr || (type == kPreDefined ? pattern == nullptr : type != kUserDefined))
        return Acad::eInvalidInput;
    changed();
    HatchFields& f = *m_fields;
    f.patternType = static_cast<Adesk::UInt16>(type);
    f.name = name;
    f.isSolid = pattern != nullptr && pattern->isSolid;
    f.families.clear();
    if (pattern == nullptr) {
        f.families = userDefinedFamilies(f.angle, f.space, f.isDouble);
        return Acad::eOk;
    }
    f.name = pattern->name.c_str();
    if (f.spaceCounts)
        f.scale = f.space;
    f.spaceCounts = false;
    for (const HatchFamily& family : pattern->families)
        f.families.push_back(turned(family, f.angle, orOne(f.scale)));
    return Acad::eOk;
}

double AcDbHatch::patternAngle() const { return readField(*this, m_fields->angle); }

// The lines of a pattern that came with a drawing are known by what they are now alone, so all are turned and
// scaled from there.
Acad::ErrorStatus AcDbHatch::setPatternAngle(double angle) {
    if (!std::isfinite(angle))
        return Acad::eInvalidInput;
    changed();
    for (HatchFamily& family : m_fields->families)
        family = turned(family, angle - m_fields->angle, 1.0);
    m_fields->angle = angle;
    return Acad::eOk;
}

double AcDbHatch::patternScale() const { return readField(*this, m_fields->scale); }

Acad::ErrorStatus AcDbHatch::setPatternScale(double scale) {
    if (!(scale > 0.0) || !std::isfinite(scale))
        return Acad::eInvalidInput;
    changed();
    HatchFields& f = *m_fields;
    if (f.patternType != kUserDefined && f.scale != scale)
        for (HatchFamily& family : f.families)
            family = turned(family, 0.0, scale / orOne(f.scale));
    f.scale = scale;
    f.spaceCounts = false;
    return Acad::eOk;
}

double AcDbHatch::patternSpace() const { return readField(*this, m_fields->space); }

Acad::ErrorStatus AcDbHatch::setPatternSpace(double space) {
    if (!(space > 0.0) || !std::isfinite(space))
        return Acad::eInvalidInput;
    changed();
    m_fields->space = space;
    m_fields->spaceCounts = true;
    if (patternType() == kUserDefined)
        m_fields->families = userDefinedFamilies(m_fields->angle, space, m_fields->isDouble);
    return Acad::eOk;
}

bool AcDbHatch::patternDouble() const { return readField(*this, m_fields->isDouble); }

Acad::ErrorStatus AcDbHatch::setPatternDouble(bool isDouble) {
    changed();
    m_fields->isDouble = isDouble;
    if (patternType() == kUserDefined)
        m_fields->families = userDefinedFamilies(m_fields->angle, m_fields->space, isDouble);
    return Acad::eOk;
}

bool AcDbHatch::isSolidFill() const { return readField(*this, m_fields->isSolid); }

int AcDbHatch::numPatternDefinitions() const {
    assertReadEnabled();
    return static_cast<int>(m_fields->families.size());
}

Acad::ErrorStatus AcDbHatch::getPatternDefinitionAt(int index, double& angle, double& baseX, double& baseY,
                                                    double& offsetX, double& offsetY,
                                                    AcGeDoubleArray& dashes) const {
    assertReadEnabled();
    if (!isIndex(index, m_fields->families.size()))
        return Acad::eInvalidIndex;
    const HatchFamily& family = m_fields->families[static_cast<std::size_t>(index)];
    angle = family.angle;
    baseX = family.base.x;
    baseY = family.base.y;
    offsetX = family.offset.x;
    offsetY = family.offset.y;
    dashes.setLogicalLength(0);
    for (const double dash : family.dashes)
        dashes.append(dash);
    return Acad::eOk;
}

AcDbHatch::HatchStyle AcDbHatch::hatchStyle() const {
    assertReadEnabled();
    return static_cast<HatchStyle>(m_fields->style);
}

Acad::ErrorStatus AcDbHatch::setHatchStyle(HatchStyle style) {
    if (style != kNormal && style != kOuter && style != kIgnore)
        return Acad::eInvalidInput;
    changed();
    m_fields->style = static_cast<Adesk::UInt16>(style);
    return Acad::eOk;
}

int AcDbHatch::numLoops() const {
    assertReadEnabled();
    return static_cast<int>(m_fields->loops.size());
}

Adesk::Int32 AcDbHatch::loopTypeAt(int loopIndex) const {
    assertReadEnabled();
    if (!isIndex(loopIndex, m_fields->loops.size()))
        return kDefault;
    return static_cast<Adesk::Int32>(m_fields->loops[static_cast<std::size_t>(loopIndex)].type);
}

Acad::ErrorStatus AcDbHatch::getLoopAt(int loopIndex, Adesk::Int32& loopType, AcGePoint2dArray& vertices,
                                       AcGeDoubleArray& bulges) const {
    assertReadEnabled();
    if (!isIndex(loopIndex, m_fields->loops.size()))
        return Acad::eInvalidIndex;
    const HatchLoop& loop = m_fields->loops[static_cast<std::size_t>(loopIndex)];
    if (pointsOf(loop) > kMostHatchPoints)
        return Acad::eExcessiveItemCount;
    loopType = static_cast<Adesk::Int32>(loop.type);
    vertices.setLogicalLength(0);
    bulges.setLogicalLength(0);
    for (const AcGePoint2d& vertex : loop.edges.empty() ? loop.vertices : ringOf(loop))
        vertices.append(vertex);
    for (const double bulge : loop.bulges)
        bulges.append(bulge);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::appendLoop(Adesk::Int32 loopType, const AcGePoint2dArray& vertices,
                                        const AcGeDoubleArray& bulges) {
    return insertLoopAt(numLoops(), loopType, vertices, bulges);
}

Acad::ErrorStatus AcDbHatch::insertLoopAt(int loopIndex, Adesk::Int32 loopType,
                                          const AcGePoint2dArray& vertices, const AcGeDoubleArray& bulges) {
    if (!isIndex(loopIndex, m_fields->loops.size() + 1))
        return Acad::eInvalidIndex;
    HatchLoop loop;
    const Acad::ErrorStatus es = newLoop(loopType, vertices, bulges, loop);
    if (es != Acad::eOk)
        return es;
    changed();
    m_fields->loops.insert(m_fields->loops.begin() + loopIndex, std::move(loop));
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::removeLoopAt(int loopIndex) {
    if (!isIndex(loopIndex, m_fields->loops.size()))
        return Acad::eInvalidIndex;
    changed();
    m_fields->loops.erase(m_fields->loops.begin() + loopIndex);
    return Acad::eOk;
}

void AcDbHatch::getEcs(AcGeMatrix3d& ecs) const {
    assertReadEnabled();
    ecs = AcGeMatrix3d::planeToWorld(m_fields->normal);
}

Acad::ErrorStatus AcDbHatch::getPlane(AcGePlane& plane, AcDb::Planarity& planarity) const {
    assertReadEnabled();
    plane.set(ownToWorld(m_fields->normal, {0.0, 0.0, m_fields->elevation}), m_fields->normal);
    planarity = AcDb::kPlanar;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHatch::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus es = AcDbEntity::dwgOutFields(filer);
    return es == Acad::eOk ? writeHatch(*filer, *m_fields) : es;
}

Acad::ErrorStatus AcDbHatch::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus es = AcDbEntity::dwgInFields(filer);
    if (es != Acad::eOk)
        return es;
    auto fields = std::make_unique<HatchFields>();
    es = readHatch(*filer, *fields);
    if (es != Acad::eOk)
        return es;
    m_fields = std::move(fields);
    m_picture.reset();
    return declineWhatIsLeft(*filer);
}
