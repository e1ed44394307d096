#pragma once

#include "base/export.h"
#include "dbx/elem/plugin.h"

#include "gemat3d.h"
#include "gevec3d.h"

#include <boost/optional.hpp>
#include <boost/shared_ptr.hpp>

#include <string>

namespace orv::elem {

class Plugin_General_PE;

// What nearly every element has: a number, a name, a BIM identifier (dbx/elem/bimid.h), and the offset at
// which its text stands from it. Who gets which number is decided by the front end, which a drawing can be
// opened without: it installs a Plugin_General_PE.
//
// A class that derives from this and does not have an id and a creator of its own comes back from every file,
// undo and clone as this class, without what it overrides. With an id of its own it is found by dynamic_cast,
// not by the id of this one.
//
// "Read" and "write" are the owner's checks, as in IPlugin. For the data see docs/plugin-bodies.md.
class TALDORK_API Plugin_General : public ElementBase::IPlugin {
public:
    static constexpr unsigned int kVersion = 4; // of the plugin's data
    static constexpr unsigned int kMagic = 0xc67aafe7;

    Plugin_General();
    ~Plugin_General() override;

    // "orv.base.general"
    const std::string& pluginId() const override;
    static const std::string& static_pluginId();
    static boost::shared_ptr<ElementBase::IPlugin> createPlugin();

protected:
    // Nothing.
    void onPreWorldDraw(const AcDbEntity& entity, AcGiWorldDraw& wd) override;
    void onWorldDraw(AcadWorldDraw& wd, System& system) override;
    // The extension's; without one reported, and nothing done.
    void onErase(bool erasing) override;
    void onPostClone() override;
    // True.
    bool onSave(serialization::IOutArchive& archive) const override;
    // Needs an owner; without one reported, and false. Puts the element's group, if it has one, number and
    // name under "general/...", but neither identifier nor offset. True.
    bool onSave(KeyValueStorage& storage) const override;
    // False for data of a newer version, of which nothing is taken, and for a wrong end. What the archive
    // throws passes through, with what was read before it taken.
    bool onLoad(serialization::IInArchive& archive, unsigned int elementVersion) override;
    // Needs an owner; without one reported, and false. Sets the element's group, number and name. The group
    // is taken from an `unsigned int` alone, which the text form of a storage yields; onSave puts an `int`.
    // What is missing becomes 0 or empty, the group the highest number. A group of the element that is no
    // `unsigned int` is reported and stays. True. Write.
    bool onLoad(const KeyValueStorage& storage) override;

public:
    // The element's own coordinate system, if it has one. Empty unless overridden.
    virtual boost::optional<AcGeMatrix3d> getCoordinateSystem() const;

    // Read.
    unsigned int getNumber() const;
    // The extension's; without one reported, and the number stays.
    void setNumber(unsigned int number);
    // Read; write.
    const std::wstring& getName() const;
    void setName(const std::wstring& name);
    // Read; write. Any text is taken.
    const std::string& getBIMID() const;
    void setBIMID(const std::string& id);
    // Write. A new identifier; empty if the system has none to give.
    void createBIMID();
    // Read; write.
    const AcGeVector3d& getTextAttachmentOffset() const;
    void setTextAttachmentOffset(const AcGeVector3d& offset);

    // Null until one is installed. Not owned.
    static Plugin_General_PE* getProtExt() { return s_protExt; }
    static void setProtExt(Plugin_General_PE* ext) { s_protExt = ext; }

protected:
    // In which version the data were stored that were loaded last; kVersion before any were.
    unsigned int lastLoadVersion() const { return m_lastLoadVersion; }

private:
    friend class Plugin_General_PE;

    void readIdentifier(serialization::IInArchive& archive);
    void readIdentifierOfAnyLength(serialization::IInArchive& archive);

    unsigned int m_lastLoadVersion = kVersion;
    std::wstring m_name;
    unsigned int m_number = 0;
    std::string m_bimId;
    AcGeVector3d m_textAttachmentOffset;

    static Plugin_General_PE* s_protExt;
};

// What the front end does about the numbers of elements. It outlives its installation; nobody destroys one
// through this. The order of the virtual operations is known to other modules.
class TALDORK_API Plugin_General_PE {
public:
    // Gives the plugin this number, or what the drawing's numbering makes of it.
    virtual void setNumber(Plugin_General& plugin, unsigned int number) = 0;
    // The plugin's element has been cloned, and has the number of its original still.
    virtual void onPostClone(Plugin_General& plugin) = 0;
    // The plugin's element is being erased, or brought back.
    virtual void onErase(Plugin_General& plugin, bool erasing) = 0;

protected:
    ~Plugin_General_PE() = default;

    // Write. Stores the number in the plugin, and no more: how an extension sets it.
    static void storeNumber(Plugin_General& plugin, unsigned int number);
};

} // namespace orv::elem
