#pragma once

#include "dbx/elem/plugin.h"
#include "structure/export.h"

#include <boost/shared_ptr.hpp>

#include <string>

namespace structure {

// What an element is made of: a cross section and a material. Lengths are in the drawing's unit.
struct Section {
    std::wstring name;
    std::wstring material;
    double width = 0.0;
    double height = 0.0;
};

inline bool operator==(const Section& a, const Section& b) {
    return a.name == b.name && a.material == b.material && a.width == b.width && a.height == b.height;
}
inline bool operator!=(const Section& a, const Section& b) { return !(a == b); }

// Gives an element its section, and writes the name beside it. A plugin with data and a format of its own:
//
//   version      unsigned int, 2
//   name         wide text
//   width        double
//   height       double
//   material     wide text; not in version 1
//   magic        unsigned int
//
// "Read" and "write" are the owner's checks, as in IPlugin.
class STRUCTURE_API SectionPlugin : public orv::elem::ElementBase::IPlugin {
public:
    static constexpr unsigned int kVersion = 2;
    static constexpr unsigned int kMagic = 0x53454354;

    SectionPlugin();
    explicit SectionPlugin(const Section& section);
    ~SectionPlugin() override;

    // "str.section.1"
    const std::string& pluginId() const override;
    static const std::string& static_pluginId();
    static boost::shared_ptr<orv::elem::ElementBase::IPlugin> createPlugin();

    // The plugin of an element, or null. Needs read.
    static SectionPlugin* of(orv::elem::ElementBase& element);
    static const SectionPlugin* of(const orv::elem::ElementBase& element);

    // Read; write.
    const Section& section() const;
    void setSection(const Section& section);

protected:
    // False, with the section as it was, for a newer version, which makes the element a proxy, and for a
    // wrong end.
    bool onSave(orv::serialization::IOutArchive& archive) const override;
    bool onLoad(orv::serialization::IInArchive& archive, unsigned int elementVersion) override;
    // Under "section/name", "section/material", "section/width" and "section/height". What is missing when
    // loading stays as it was.
    bool onSave(orv::KeyValueStorage& storage) const override;
    bool onLoad(const orv::KeyValueStorage& storage) override;

    // Along the element as it is seen, so that it can be read from everywhere.
    void onViewportDraw(orv::AcadViewportDraw& draw, orv::System& system) override;
    void onAppendElementInfo(orv::ElementInfoContext& info) const override;

public:
    // The two ends of an element that is an open curve, each with the direction out of it. Read.
    void onQueryEndpointInterface(orv::geom::EndpointInterface& endpoints) const override;

private:
    Section m_section;
};

} // namespace structure
