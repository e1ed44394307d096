#pragma once

#include "base/export.h"
#include "dbx/elem/element_base.h"

namespace orv::elem {

// A piece of an element's behaviour, with data and a version of its own. A drawing keeps it by its id, so
// that it outlives the code. Its calls are those of its element's thread.
//
// The order of the virtual operations is known to other modules. A compiler that groups overloads in its
// table of virtual operations puts those of `onSave` and of `onLoad` in the opposite order; those modules are
// built with the same. A derived plugin adds its own behind them. The hooks do nothing unless overridden.
class TALDORK_API ElementBase::IPlugin : boost::noncopyable {
public:
    static constexpr unsigned int kVersion = 1; // of the frame around the plugin's data
    static constexpr unsigned int kMagic = 0xafdb7de5;

    virtual ~IPlugin();
    // ASCII, never empty; the same for all of one class. An incompatible successor has an id of its own.
    virtual const std::string& pluginId() const = 0;

protected:
    // The hooks below come in the order of the element's plugins, by the element's trigger of the same name,
    // which the concrete element calls when the host tells it of the event; the trigger's comment says for
    // what the host object is open then. What a hook throws is printed and ends the round: those behind do
    // not hear.

    // Called by setOwner, whatever the element is open for. The old owner is null the first time.
    virtual void onDetached(ElementBase* previousOwner);
    virtual void onAttached();
    // Before grips move by that vector, which may be changed for those behind and for the element. Write.
    virtual void onPreMoveGrips(AcGeVector3d& offset);
    // The user looks at the element: grips of the plugin's own may be made. Read.
    virtual void onGetGrips(GripManager::ScopedCreator& creator) const;
    // Before the element is transformed by that matrix, which may be changed likewise. Write.
    virtual void onPreTransform(AcGeMatrix3d& xform);
    // After it was, by what the matrix had become. Write.
    virtual void onPostTransform(const AcGeMatrix3d& xform);
    // Before the entity draws itself, and when the plugin may draw with it: what looks the same from
    // everywhere. Colours and other traits that onWorldDraw sets are put back behind it; those that
    // onPreWorldDraw sets hold for all that follows. Read.
    virtual void onPreWorldDraw(const AcDbEntity& entity, AcGiWorldDraw& wd);
    virtual void onWorldDraw(AcadWorldDraw& wd, System& system);
    // The same for one viewport. Traits hold for the plugins behind, too. Read.
    virtual void onPreViewportDraw(const AcDbEntity& entity, AcGiViewportDraw& vd);
    virtual void onViewportDraw(AcadViewportDraw& vd, System& system);
    // The element is erased (true) or brought back. Write.
    virtual void onErase(bool erasing);
    // On the clone, once all that was cloned with it is there and its ids lead to the clones. Write.
    virtual void onPostClone();
    // Somebody asks what the element is: titled values may be added. Read.
    virtual void onAppendElementInfo(ElementInfoContext& info) const;
    // Vetoes: true unless overridden.
    virtual bool canElementBeCloned(const ElementCloneContext& context) const;
    virtual bool canElementBeTransformed() const;
    // The element has been moved, by whatever way; all of that move is done. Write.
    virtual void onMoved();

public:
    // A front end that snaps asks for the ends of the element; nobody here does.
    virtual void onQueryEndpointInterface(geom::EndpointInterface& endpoints) const;

protected:
    // The plugin's data: by convention its own version first and its own magic last. False when loading makes
    // the host keep the whole element as a proxy; when saving it leaves the frame's end away, and such a
    // record does not load again. `elementVersion` is that of the element's stream.
    virtual bool onSave(serialization::IOutArchive& archive) const;
    virtual bool onSave(KeyValueStorage& storage) const;
    virtual bool onLoad(serialization::IInArchive& archive, unsigned int elementVersion);
    virtual bool onLoad(const KeyValueStorage& storage);

    IPlugin();

    // Those of the owner; without one nothing.
    void assertReadEnabled() const;
    void assertWriteEnabled();

public:
    // Null before the plugin is added to an element. The owner never takes itself back: once the element has
    // gone this is not to be used.
    ElementBase* owner() const { return m_owner; }
    // Calls onDetached, always and with the old owner still in place, then onAttached.
    void setOwner(ElementBase* newOwner);

    // Read; write; read; write for AcDb::kForWrite, else read.
    const AcadObjectProperties& getProperties() const;
    AcadObjectProperties& setProperties();
    const PropertyTree& properties() const;
    PropertyTree& properties(AcDb::OpenMode mode);

    // onSave and onLoad in their frame: version, data, magic. What onSave answers; for load whether all was
    // there with the right end. A newer frame is reported and read all the same. An archive that ends early
    // throws through it.
    bool save(serialization::IOutArchive& archive) const;
    bool load(serialization::IInArchive& archive, unsigned int elementVersion);
    bool save(KeyValueStorage& storage) const;
    bool load(const KeyValueStorage& storage);

private:
    friend class ElementBase;

    ElementBase* m_owner = nullptr;
    AcadObjectProperties m_properties;
    PropertyTree m_tree;
};

} // namespace orv::elem
