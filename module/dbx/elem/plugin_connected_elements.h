#pragma once

#include "base/export.h"
#include "dbx/elem/plugin.h"

#include "acadstrc.h"
#include "dbid.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <set>
#include <string>

class AcDbDwgFiler;

namespace orv::elem {

// How the ids of connected objects are filed. Any other value counts as kSoftPointer and is kept.
enum Ownership : std::uint32_t {
    kHardPointer = 0, // a drawing keeps what they name
    kSoftPointer = 1
};

// The drawing objects that depend on an element, as the loads on a beam do: a set of ids, filed as pointers
// that the host translates. Whether they go with the element and are drawn anew when it moves is chosen by
// flags. The set does not watch the objects: an id stays when its object is erased by others, and is passed
// over.
//
// A class that derives from this and does not have an id and a creator of its own comes back from every file,
// undo and clone as this class, with hard pointers; one with soft pointers under this id is therefore
// reported at every reading, and then has the stored ones.
//
// "Read" and "write" are the owner's checks, as in IPlugin. For the data see docs/plugin-bodies.md.
class TALDORK_API Plugin_ConnectedElements : public ElementBase::IPlugin {
public:
    enum Behaviour : unsigned int {
        kEraseConnected = 1,     // erasing the element erases them
        kRefreshOnTransform = 2, // they are drawn anew when the element is transformed
    };

    static constexpr unsigned int kVersion = 4; // of the plugin's data
    static constexpr unsigned int kMagic = 0xbd5ca77a;

    // In the host's order of ids.
    struct IsLess {
        bool operator()(const AcDbObjectId& a, const AcDbObjectId& b) const {
            return c5ObjIdIsLessThan(a, b) != 0;
        }
    };
    using Ids = std::set<AcDbObjectId, IsLess>;
    using const_iterator = Ids::const_iterator;

    explicit Plugin_ConnectedElements(Ownership ownership = kHardPointer);
    ~Plugin_ConnectedElements() override;

    // "orv.se.connectedelements.1"
    const std::string& pluginId() const override;
    static const std::string& static_pluginId();
    // With hard pointers.
    static boost::shared_ptr<ElementBase::IPlugin> createPlugin();

protected:
    // recordGraphicsModifiedForAll if the flag is set.
    void onPreTransform(AcGeMatrix3d& xform) override;
    // Erases the connected objects if the flag is set, but not during an undo or redo, which brings their own
    // states back. The set is empty afterwards, whatever came of it; an object that refuses is reported.
    // Unerasing changes nothing.
    void onErase(bool erasing) override;
    // True.
    bool onSave(serialization::IOutArchive& archive) const override;
    // Takes the stored ownership, another one than that of the constructor with a report. Data without ids
    // leave the set alone. Data of a newer version are reported and read all the same. False for a wrong end.
    // What the archive throws passes through, with what was read before it taken.
    bool onLoad(serialization::IInArchive& archive, unsigned int elementVersion) override;

    // Nothing, unless overridden. After the id went in or out.
    virtual void onConnectedElementAdded(const AcDbObjectId& id);
    virtual void onConnectedElementRemoved(const AcDbObjectId& id);
    // Whoever changes an element tells this to those that are connected to it. The flags are his.
    virtual void onOwnerChanged(ElementBase& element, unsigned int flags);

public:
    // Read; write.
    Ownership ownership();
    void setBehaviour(unsigned int behaviour);

    // Read, all three. The iterators are valid until the set is changed.
    std::uint64_t size() const;
    const_iterator begin() const;
    const_iterator end() const;

    // Write. The id. The hook is called for one that was there, too.
    AcDbObjectId add(const AcDbObjectId& id);
    // Write. The hook is called for one that was not there, too.
    void remove(const AcDbObjectId& id);
    // Write. The hook is called for each, with the set empty already.
    void removeAll();
    // Read.
    bool contains(const AcDbObjectId& id) const;
    // The stored id, or null.
    AcDbObjectId getReference(const AcDbObjectId& id) const;

    // Marks the connected entities for drawing; an element that is a load (its first GenericLoad counts) also
    // lays its arrows out anew then. A load that acts on another element, or on none, ends the walk: neither
    // it nor those behind it are marked. What is erased, cannot be opened for write, or is a proxy is passed
    // over. Nothing without an owner.
    void recordGraphicsModifiedForAll();

    // Write, on `element`. Calls onOwnerChanged on those of its plugins that are of this class, in order.
    static void triggerOwnerChanged(ElementBase& element, unsigned int flags);

    // Reads the set as entities filed it before the plugin had data of its own: a count, and that many hard
    // pointers, of which null ones are left out. The status of the first read that fails, with what was read
    // before it in the set. eInvalidInput for null, which is reported, and the set stays.
    Acad::ErrorStatus _read(AcDbDwgFiler* pFiler);

private:
    void assertWriteEnabledForAll();
    void eraseAll();
    void readIds(serialization::IInArchive& archive);

    Ownership m_ownership;
    unsigned int m_behaviour = 0;
    Ids m_ids;
};

} // namespace orv::elem
