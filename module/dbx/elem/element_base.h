#pragma once

#include "base/export.h"
#include "dbx/doc/database_element_base.h"
#include "dbx/elem/ObjectProperties.h"
#include "dbx/elem/const_vector_iterator.h"
#include "dbx/elem/element_log_access.h"
#include "orvshape/grip_manager.h"
#include "property_tree/property_tree.h"

#include "acdb.h"
#include "dbid.h"

#include <boost/container/deque.hpp>
#include <boost/function.hpp>
#include <boost/noncopyable.hpp>
#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <deque>
#include <string>
#include <utility>

class AcDbDwgFiler;
class AcDbEntity;
class AcDbObject;
class AcGeMatrix3d;
class AcGePoint3d;
class AcGeVector3d;
class AcGiViewportDraw;
class AcGiWorldDraw;
class AcRxClass;

namespace orv {
class AcadViewportDraw;
class AcadWorldDraw;
struct ElementCloneContext;
class ElementLog;
class KeyValueStorage;
class System;
namespace geom {
class EndpointInterface;
}
namespace serialization {
struct IInArchive;
struct IOutArchive;
} // namespace serialization
} // namespace orv

namespace orv::elem {

// What the front end adds to every element. Only its pointer is kept here.
struct ElementBasePE;

// An element of the structural model, put together from plugins: it holds them in order, hands the host's
// events to each of them, and files them together with its own properties, value tree and log. A concrete
// element derives from a class of the host, such as AcDbEntity, and from this one.
//
// "Read" and "write" at an operation say which of the host object's checks it begins with. Needs a host
// object that lives as long as this.
class TALDORK_API ElementBase : public doc::DatabaseElementBase, boost::noncopyable {
public:
    class IPlugin;
    struct ProxyPlugin;
    using Plugins = std::deque<boost::shared_ptr<IPlugin>>;
    // This deque takes no memory while it is empty, which it nearly always is.
    using UnknownPlugins = boost::container::deque<std::pair<std::string, boost::shared_ptr<ProxyPlugin>>>;
    using GripFilter = boost::function<bool(const AcGePoint3d&)>;

    static constexpr std::int32_t kVersion = 6; // of the stream that dwgOutFields writes
    static constexpr std::int32_t kMagic = 0x736456af;

    // Drops the plugins without telling them.
    ~ElementBase() override;

    // The order of the virtual operations is known to other modules. A compiler that groups overloads in its
    // table of virtual operations puts those of `onSave` and of `onLoad` in the opposite order; those modules
    // are built with the same.

    // Write; also called while the element is read.
    void setNodDatabaseId(const AcDbObjectId& id, const std::wstring& name) override;
    // Read, both.
    AcDbObjectId getNodDatabaseId() override;
    const std::wstring& getNodDatabaseName() const override;
    // Read. What the base tells, then each plugin.
    void appendElementInfo(ElementInfoContext& info) const override;
    // The element has been cloned; called ahead of the plugins. Nothing unless overridden.
    virtual void onPostClone();
    // Read. False as soon as one plugin says so; one that throws does not.
    virtual bool canElementBeCloned(const ElementCloneContext& context) const;
    virtual bool canBeTransformed() const;

    // The host object's operations of these names.
    virtual void acdb_assertWriteEnabled() = 0;
    virtual void acdb_assertReadEnabled() const = 0;
    virtual AcRxClass* acdb_isA() const = 0;
    virtual int acdb_isNewObject() const = 0;
    virtual AcDbObjectId acdb_id() = 0;

protected:
    // The element's own data, filed behind those of the plugins; pointers may not enter that archive, which
    // files none. `version` is that of the stream. Saving is not asked for success; loading that answers
    // false makes the host keep the element as a proxy.
    virtual bool onSave(serialization::IOutArchive& archive) const;
    virtual bool onSave(KeyValueStorage& storage) const;
    virtual bool onLoad(serialization::IInArchive& archive, unsigned int version);
    virtual bool onLoad(const KeyValueStorage& storage);
    // The element has been moved; called ahead of the plugins. Nothing unless overridden.
    virtual void onMoved();

public:
    // Write. To the end of the list, and attached. Null is reported and ignored. A bare pointer belongs to
    // the element from then on.
    void addPlugin(boost::shared_ptr<IPlugin> plugin);
    void addPlugin(IPlugin* plugin);
    // Write. Takes the plugin, which must be one of the list, out of it. It still names this element as its
    // owner, and is told nothing until it gets another one. Empty for null, without a check.
    boost::shared_ptr<IPlugin> detachPlugin(IPlugin* plugin);
    // Read. The first one with that id, or null.
    const IPlugin* getFirstPlugin(const std::string& id) const;
    IPlugin* getFirstPlugin(const std::string& id);
    // Read. In the order of the list; valid until that changes.
    ConstVectorIterator<Plugins> getConstPluginIterator() const;
    // Read. Records of plugins that could not be made when the element was read. They are filed behind the
    // plugins, and take part in nothing else. To be walked from begin() to end(): more than that is not
    // promised of the container.
    const UnknownPlugins& unknownPlugins() const;

    // Read; write; read; write for AcDb::kForWrite, else read.
    const AcadObjectProperties& getProperties() const;
    AcadObjectProperties& setProperties();
    const PropertyTree& properties() const;
    PropertyTree& properties(AcDb::OpenMode mode);

    // A predicate on grip points; an empty one is ignored.
    void addGripFilter(const GripFilter& filter);
    // Whether all of the filters agree. Those behind the first that does not are not asked.
    bool filterGrip(const AcGePoint3d& point) const;

    // Copies nothing: a concrete element copies what it needs itself. Null is reported.
    void copyFromBase(const ElementBase* source);

    // The filer of the filing that runs now, for what is called from there and sees only an archive. Null
    // otherwise, but not to be relied on after a filing that failed.
    AcDbDwgFiler* activeFiler() { return m_activeFiler; }

    static ElementBasePE* getProtExt() { return s_protExt; }
    static void setProtExt(ElementBasePE* ext) { s_protExt = ext; }

    // Read; write. The element's values, then each plugin's, under names. False if something is thrown, which
    // is printed and ends it; else true, whatever the single ones answer.
    bool save(KeyValueStorage& storage) const;
    bool load(const KeyValueStorage& storage);

    // File the whole element; a concrete element calls them from its own filing, behind the host class's.
    // The status of the first call that fails, or eOk; 301 for a property of a type that cannot be filed; for
    // a tree 3 if its root has data, 22 at a value of a type that cannot be filed, 33 at a node below
    // property_tree::kMaxDepth. What an archive or a plugin throws passes through. See
    // docs/element-stream.md.
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler& filer) const;
    // Replaces plugins, properties, tree and log, and sets the link to the store. Status 301, by which the
    // host keeps the object as a proxy, for a newer stream (with nothing changed), for a plugin or an element
    // that does not load, a property or an argument of an unknown type, a newer or damaged log, and a wrong
    // end; 22 or 33 for a damaged tree, and 33 for one that is too deep. AlreadyExistsException for a
    // property's key that comes twice.
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler& filer);

    // What the host reports, handed to each plugin in order. A plugin that throws ends the round; what it
    // threw is printed, and those behind it do not hear of the event.

    void triggerOnGetGrips(GripManager::ScopedCreator& creator) const;      // read
    void triggerOnPreMoveGrips(AcGeVector3d& offset);                       // write; a plugin may change it
    void triggerOnPreTransform(AcGeMatrix3d& xform);                        // write; a plugin may change it
    void triggerOnPostTransform(const AcGeMatrix3d& xform);                 // write
    void triggerOnPreWorldDraw(AcGiWorldDraw& wd) const;                    // read; for an entity only
    void triggerOnWorldDraw(AcadWorldDraw& wd, System& system) const;       // read; traits are put back
    void triggerOnPreViewportDraw(AcGiViewportDraw& vd) const;              // read; for an entity only
    void triggerOnViewportDraw(AcadViewportDraw& vd, System& system) const; // read; traits stay
    void triggerOnErase(bool erasing);                                      // write
    void triggerOnPostClone();                                              // write
    void triggerOnMoved();                                                  // write

protected:
    explicit ElementBase(AcDbObject& host);

    // Read. Reported, and std::runtime_error, if there is none.
    const ElementLog& getLog() const;
    // Write. Makes the log if there is none.
    ElementLog& assertLog();
    // Read. No log, or one without entries.
    bool isLogEmpty() const;

private:
    friend class ElementReader;
    friend class ElementWriter;
    friend const ElementLog* logOf(const ElementBase& element);

    bool save(serialization::IOutArchive& archive) const;
    bool load(serialization::IInArchive& archive, unsigned int version);
    template <class Call>
    void forEachPlugin(Call call) const;
    template <class Ask>
    bool doAllAgree(Ask ask) const;
    const AcDbEntity* hostEntity() const;

    mutable AcDbDwgFiler* m_activeFiler = nullptr;
    AcDbObjectId m_nodDatabaseId;
    std::wstring m_nodDatabaseName;
    Plugins m_plugins;
    AcadObjectProperties m_properties;
    PropertyTree m_tree;
    boost::shared_ptr<ElementLog> m_log;
    UnknownPlugins m_unknownPlugins;
    AcDbObject* m_host;
    boost::container::deque<GripFilter> m_gripFilters;

    static ElementBasePE* s_protExt;
};

} // namespace orv::elem
