#pragma once

#include "base/export.h"
#include "dbx/elem/generic_load.h"

namespace orv::elem {

// A load that belongs to one element. It has an id of its own for that, beside the one that GenericLoad
// draws, clones and saves by: whoever attaches it sets both. The front end derives the concrete plugins.
struct TALDORK_API ElementLoad : public GenericLoad {
public:
    static constexpr unsigned int kVersion = 2; // of this class's part of the plugin's data
    static constexpr unsigned int kMagic = 0x81a7a7c1;

    ~ElementLoad() override;

protected:
    ElementLoad();

    // What GenericLoad answers, and true.
    bool onSave(serialization::IOutArchive& archive) const override;
    using GenericLoad::onSave;
    // As GenericLoad, whose data stand in front. Data of version 1 have no element, and that of the class
    // stays.
    bool onLoad(serialization::IInArchive& archive, unsigned int elementVersion) override;

public:
    // Read; write. The element of this class alone; that of GenericLoad stays, and nothing is told or drawn
    // anew.
    const AcDbObjectId& getElement() const;
    void setElement(const AcDbObjectId& id);

private:
    AcDbObjectId m_ownElement;
};

} // namespace orv::elem
