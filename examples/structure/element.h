#pragma once

#include "dbx/elem/base.h"
#include "dbx/elem/plugin_connected_elements.h"
#include "structure/export.h"

#include "dbmain.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <boost/shared_ptr.hpp>

#include <set>
#include <string>

namespace structure {

// What beams, slabs, nodes and loads have in common, whichever class of the host they derive from. The part
// that depends on that class is ElementOf (element_of.h).
class STRUCTURE_API Element : public orv::elem::ElementBase {
public:
    using General = orv::elem::Plugin_General;
    using Connections = orv::elem::Plugin_ConnectedElements;

    // The object as this, if it is an element of this module; else null, also for null.
    static Element* cast(AcDbObject* object) { return dynamic_cast<Element*>(object); }
    static const Element* cast(const AcDbObject* object) { return dynamic_cast<const Element*>(object); }

    AcDbEntity& entity() { return m_entity; }
    const AcDbEntity& entity() const { return m_entity; }

    // "beam" and so on; each kind counts its numbers for itself.
    virtual const wchar_t* kind() const = 0;

    // Needs read. Number, name and BIM identifier; null for an element whose stream did not have them.
    General* general();
    const General* general() const;
    // Needs read. What the element knows of others, but for loads; null if it knows nothing.
    Connections* connections();
    const Connections* connections() const;

    // Where a text about the element stands, and how it runs. Needs read.
    virtual AcGePoint3d labelPoint() const = 0;
    virtual AcGeVector3d labelDirection() const { return AcGeVector3d::kXAxis; }

    // Binds the element to the store of a system. Needs write. The drawing must have that store.
    void bindTo(const AcDbObjectId& store, const std::wstring& name) { setNodDatabaseId(store, name); }

    // Kind, number and name, then what the plugins tell.
    void appendElementInfo(orv::ElementInfoContext& info) const override;

    // Whether its place has changed since it was last asked. For the reactor.
    bool takeMoved() const;
    // It was read as the copy of another element, and has not yet been told so. For the reactor.
    bool takeCopied() const;

protected:
    explicit Element(AcDbEntity& entity) : ElementBase(entity), m_entity(entity) {}

    // The plugins that every fresh element has. The host makes elements without any: they come with the
    // stream.
    void addUsualPlugins(orv::elem::Ownership ownership, unsigned int behaviour);
    void addUsualPlugins(orv::elem::Ownership ownership, unsigned int behaviour,
                         const boost::shared_ptr<General>& general);

    // A copy is another thing of the real building, and knows only what was copied with it.
    void onPostClone() override;

    // Forgets connections to what is erased or of another drawing. Needs write.
    void dropLostConnections();

    void noteMoved() { m_moved = true; }
    void noteCopied() { m_copied = true; }

    // The entity's system where its drawing has it; else null, without a report.
    orv::System* findSystem() const;

private:
    AcDbEntity& m_entity;
    mutable bool m_moved = false;
    mutable bool m_copied = false;
};

// While copies are told that they are copies: what else has come to be in the same go. Belongs on the stack.
class STRUCTURE_API CopiedTogether {
public:
    // The set must outlive this.
    explicit CopiedTogether(const std::set<AcDbObjectId>& copies);
    ~CopiedTogether();

    CopiedTogether(const CopiedTogether&) = delete;
    CopiedTogether& operator=(const CopiedTogether&) = delete;

    // False while no copies are told.
    static bool has(const AcDbObjectId& id);

private:
    const std::set<AcDbObjectId>* m_before;
};

} // namespace structure
