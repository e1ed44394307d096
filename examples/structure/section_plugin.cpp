#include "structure/section_plugin.h"

#include "base/assert.h"
#include "base/key_value_storage.h"
#include "dbx/doc/system.h"
#include "dbx/elem/plugin_registry.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"
#include "orvcore/warn_on_new_version.h"
#include "orvshape/acad_draw.h"
#include "orvshape/element_contexts.h"
#include "orvshape/endpoint_interface.h"
#include "orvshape/segmented_curve.h"
#include "structure/element.h"

#include <boost/make_shared.hpp>

#include <cmath>

namespace structure {

namespace {

constexpr unsigned int kFirstVersionWithMaterial = 2;

// The height of the letters, in metres.
constexpr double kTextHeight = 0.15;

// Between the element and the letters, in heights of these.
constexpr double kGap = 0.3;

// As the attachments of orv::AcadCommonDraw are counted.
constexpr int kBaseLineCentre = 8;

// Of a direction of length 1 that is seen shorter than this nothing tells any more where it leads.
constexpr double kLeastSeen = 1.0e-3;
// How far from upright rounding may have taken a direction that is upright.
constexpr double kUpright = 1.0e-6;

// Where a text in the plane of the screen runs, so that it goes along the direction as that is seen, from
// left to right, or upwards.
AcGeVector3d readableAlong(const AcGeVector3d& direction, const orv::AcadViewportDraw& draw) {
    const double toRight = direction.normal().dotProduct(draw.viewRight());
    const double upwards = direction.normal().dotProduct(draw.viewUp());
    if (!(std::hypot(toRight, upwards) > kLeastSeen))
        return draw.viewRight();
    const bool isTurned = std::fabs(toRight) <= kUpright ? upwards < 0.0 : toRight < 0.0;
    const AcGeVector3d seen = draw.viewRight() * toRight + draw.viewUp() * upwards;
    return isTurned ? -seen : seen;
}

// The table of creators is filled while the module is loaded, before any drawing opens.
const bool s_registered = [] {
    orv::elem::ElementPluginRegistry::registerCreator(SectionPlugin::static_pluginId(),
                                                      &SectionPlugin::createPlugin);
    return true;
}();

} // namespace

SectionPlugin::SectionPlugin() = default;
SectionPlugin::SectionPlugin(const Section& section) : m_section(section) {}
SectionPlugin::~SectionPlugin() = default;

const std::string& SectionPlugin::static_pluginId() {
    static const std::string id = "str.section.1";
    return id;
}

const std::string& SectionPlugin::pluginId() const { return static_pluginId(); }

boost::shared_ptr<orv::elem::ElementBase::IPlugin> SectionPlugin::createPlugin() {
    return boost::make_shared<SectionPlugin>();
}

SectionPlugin* SectionPlugin::of(orv::elem::ElementBase& element) {
    return dynamic_cast<SectionPlugin*>(element.getFirstPlugin(static_pluginId()));
}

const SectionPlugin* SectionPlugin::of(const orv::elem::ElementBase& element) {
    return dynamic_cast<const SectionPlugin*>(element.getFirstPlugin(static_pluginId()));
}

const Section& SectionPlugin::section() const {
    assertReadEnabled();
    return m_section;
}

void SectionPlugin::setSection(const Section& section) {
    assertWriteEnabled();
    m_section = section;
}

bool SectionPlugin::onSave(orv::serialization::IOutArchive& archive) const {
    archive << kVersion << m_section.name << m_section.width << m_section.height << m_section.material
            << kMagic;
    return true;
}

bool SectionPlugin::onLoad(orv::serialization::IInArchive& archive, unsigned int) {
    unsigned int version = 0;
    archive >> version;
    ORV_ASSERT(version <= kVersion)(version)(kVersion);
    orv_warnOnNewVersion(version, kVersion, "Structure");
    if (version > kVersion)
        return false;
    Section section;
    archive >> section.name >> section.width >> section.height;
    if (version >= kFirstVersionWithMaterial)
        archive >> section.material;
    unsigned int magic = 0;
    archive >> magic;
    ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("filing error");
    if (magic != kMagic)
        return false;
    m_section = section;
    return true;
}

bool SectionPlugin::onSave(orv::KeyValueStorage& storage) const {
    storage.set("section/name", m_section.name)
        .set("section/material", m_section.material)
        .set("section/width", m_section.width)
        .set("section/height", m_section.height);
    return true;
}

bool SectionPlugin::onLoad(const orv::KeyValueStorage& storage) {
    m_section.name = storage.getValue("section/name", m_section.name);
    m_section.material = storage.getValue("section/material", m_section.material);
    m_section.width = storage.getValue("section/width", m_section.width);
    m_section.height = storage.getValue("section/height", m_section.height);
    return true;
}

// In each viewport for itself: a text that everyone sees stands on its head for some of them.
void SectionPlugin::onViewportDraw(orv::AcadViewportDraw& draw, orv::System& system) {
    const auto* const element = dynamic_cast<const Element*>(owner());
    if (element == nullptr || m_section.name.empty())
        return;
    AcGePoint3d point = element->labelPoint();
    if (const Element::General* const general = element->general())
        point += general->getTextAttachmentOffset();
    draw.textSize(kTextHeight * system.scaleCdb2Wcs());
    draw.textAttachment(kBaseLineCentre);
    const AcGeVector3d along = readableAlong(element->labelDirection(), draw);
    const AcGeVector3d up = draw.viewRight().crossProduct(draw.viewUp()).crossProduct(along).normal();
    draw.text(point + up * (draw.textSize() * kGap), m_section.name, along);
}

void SectionPlugin::onQueryEndpointInterface(orv::geom::EndpointInterface& endpoints) const {
    const auto* const curve = dynamic_cast<const ORV_SegmentedCurve*>(owner());
    if (curve == nullptr || curve->isEmpty() || curve->isClosed())
        return;
    const double length = curve->getLength();
    orv::geom::Endpoint start, end;
    start.owner = end.owner = curve->objectId();
    curve->getStartPoint(start.point);
    curve->getEndPoint(end.point);
    curve->getFirstDeriv(0.0, start.direction);
    curve->getFirstDeriv(length, end.direction);
    start.direction = -start.direction;
    endpoints.addEndpoint(start);
    endpoints.addEndpoint(end);
}

void SectionPlugin::onAppendElementInfo(orv::ElementInfoContext& info) const {
    info.heading(L"Section");
    info.value(L"Name", m_section.name);
    info.value(L"Material", m_section.material);
    info.value(L"Width", m_section.width);
    info.value(L"Height", m_section.height);
}

} // namespace structure
