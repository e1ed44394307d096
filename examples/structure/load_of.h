#pragma once

#include "base/assert.h"
#include "base/key_value_storage.h"
#include "dbx/elem/generic_load.h"
#include "dbx/elem/load_base.h"
#include "dbx/in_archive.h"
#include "dbx/out_archive.h"
#include "orvcore/warn_on_new_version.h"
#include "orvshape/acad_draw.h"
#include "orvshape/segmented_curve.h"
#include "structure/load_shape.h"

#include <string>

namespace structure {

// Makes a drawn load of FreeLoadBase or ElementLoad: it says how the values run between the vertices, writes
// them beside the arrows, and keeps the vertices where the element is, which is the load's curve. What it
// files stands behind the data of the base:
//
//   version      unsigned int, 1
//   shape        unsigned int, LoadShape
//   unit         wide text
//   magic        unsigned int
template <class Base>
class LoadOf : public Base, public ShapedLoad {
public:
    static constexpr unsigned int kShapeVersion = 1;
    static constexpr unsigned int kShapeMagic = 0x53544c44;

    LoadShape shape() const override {
        this->assertReadEnabled();
        return m_shape;
    }
    void setShape(LoadShape shape) override {
        this->assertWriteEnabled();
        m_shape = shape;
        this->requestRefreshGraphics();
    }
    const std::wstring& unit() const override {
        this->assertReadEnabled();
        return m_unit;
    }
    void setUnit(const std::wstring& unit) override {
        this->assertWriteEnabled();
        m_unit = unit;
        writeTexts(*this, m_unit);
    }

    void onEdited() override { writeTexts(*this, m_unit); }

    void postprocessInterpolationData(orv::elem::detail::LoadVisualizationData& data) const override {
        addArrowsAtVertices(*this, data);
    }

protected:
    void setupInterpolationData(orv::System& system,
                                orv::elem::detail::LoadVisualizationData& data) override {
        setUpValues(*this, m_shape, system, data);
    }

    void onValuesChanged() override { writeTexts(*this, m_unit); }

    void onMoved() override {
        Base::onMoved();
        if (const auto* const curve = dynamic_cast<const ORV_SegmentedCurve*>(this->owner()))
            takePointsFrom(*curve, *this);
    }

    void onViewportDraw(orv::AcadViewportDraw& draw, orv::System& system) override {
        Base::onViewportDraw(draw, system);
        if (this->getDistribution() == orv::elem::kLineLoad)
            drawLineTexts(draw, system);
        else if (this->getDistribution() == orv::elem::kAreaLoad)
            drawAreaTexts(draw, system);
    }

    // What the base answers, and true.
    bool onSave(orv::serialization::IOutArchive& archive) const override {
        if (!Base::onSave(archive))
            return false;
        archive << kShapeVersion << static_cast<unsigned int>(m_shape) << m_unit << kShapeMagic;
        return true;
    }
    // False as the base, and with shape and unit as they were for a newer version, an unknown shape and a
    // wrong end.
    bool onLoad(orv::serialization::IInArchive& archive, unsigned int elementVersion) override {
        if (!Base::onLoad(archive, elementVersion))
            return false;
        unsigned int version = 0;
        archive >> version;
        ORV_ASSERT(version <= kShapeVersion)(version)(kShapeVersion);
        orv_warnOnNewVersion(version, kShapeVersion, "Structure");
        if (version > kShapeVersion)
            return false;
        unsigned int shape = 0, magic = 0;
        std::wstring unit;
        archive >> shape >> unit >> magic;
        ORV_ASSERT(magic == kShapeMagic)(magic)(kShapeMagic).debug("filing error");
        if (magic != kShapeMagic || shape > static_cast<unsigned int>(kLastLoadShape))
            return false;
        m_shape = static_cast<LoadShape>(shape);
        m_unit = unit;
        return true;
    }

    // "shape" and "unit" beside the values of the base.
    bool onSave(orv::KeyValueStorage& storage) const override {
        if (!Base::onSave(storage))
            return false;
        std::string prefix;
        const bool isFree = this->orv::elem::GenericLoad::getElement().isNull();
        orv::elem::LoadBase::createSaveString(this->getDistribution(), isFree, prefix);
        storage.set(prefix + "shape", static_cast<int>(m_shape)).set(prefix + "unit", m_unit);
        return true;
    }
    using Base::onLoad;

private:
    void drawLineTexts(orv::AcadViewportDraw& draw, orv::System& system) {
        const auto* const curve = dynamic_cast<const ORV_SegmentedCurve*>(this->owner());
        if (curve == nullptr || curve->isEmpty())
            return;
        for (const ValuePlace& place : valuePlaces(*this, m_shape, curve->getLength()))
            this->_draw_lineload_text_at(draw, system, place.distance, place.vertex);
    }

    void drawAreaTexts(orv::AcadViewportDraw& draw, orv::System& system) {
        const auto& vertices = this->getVertices();
        const std::size_t count = m_shape == LoadShape::kPlanar || vertices.empty() ? vertices.size() : 1;
        for (std::size_t i = 0; i < count; ++i)
            this->_draw_areaload_text_at(draw, system, vertices[i].point, static_cast<unsigned int>(i),
                                         std::wstring());
    }

    LoadShape m_shape = LoadShape::kLinear;
    std::wstring m_unit;
};

} // namespace structure
