#pragma once

#include "base/export.h"
#include "dbx/elem/generic_load.h"

#include <set>

namespace orv::elem {

// A load that stands in space, and says by numbers what it acts on. The front end derives the concrete
// plugins.
struct TALDORK_API FreeLoadBase : public GenericLoad {
public:
    static constexpr unsigned int kVersion = 4; // of this class's part of the plugin's data
    static constexpr unsigned int kMagic = 0x81a7a7c1;
    // An affected number that stands for any object.
    static constexpr unsigned int REFERENCE_ANY = 0xffffffff;

    ~FreeLoadBase() override;

protected:
    FreeLoadBase();

    void onWorldDraw(AcadWorldDraw& wd, System& system) override;
    void onViewportDraw(AcadViewportDraw& vd, System& system) override;
    // What GenericLoad answers, and true.
    bool onSave(serialization::IOutArchive& archive) const override;
    // Those of GenericLoad, then reference type, affected numbers, projection and depth. True.
    bool onSave(KeyValueStorage& storage) const override;
    // As GenericLoad. Data of versions below 4 have nothing of GenericLoad's, which stays.
    bool onLoad(serialization::IInArchive& archive, unsigned int elementVersion) override;

    // Write.
    void setFreeLoadType(LoadNature nature);

public:
    // Read; write. Setting asks for no new arrows.
    FreeLoadReference::Type getReferenceType() const;
    void setReferenceType(FreeLoadReference::Type type);
    // Read; write.
    FreeLoadProjection::Type getProjectionType() const;
    void setProjectionType(FreeLoadProjection::Type type);
    // Read.
    LoadNature getFreeLoadType() const;
    // Read; write. In drawing units. Setting asks for no new arrows.
    double getDepth() const;
    void setDepth(double depth);
    // Read; write. The numbers of the objects that it acts on. Setting asks for no new arrows.
    const std::set<unsigned int>& getAffectedNos() const;
    void setAffectedNos(const std::set<unsigned int>& numbers);

    // What the derived class puts under its keys (onSave). True.
    bool save(KeyValueStorage& storage) const;
    using IPlugin::save;

private:
    void readData(serialization::IInArchive& archive, unsigned int version);

    FreeLoadReference::Type m_referenceType = FreeLoadReference::kGeneral;
    double m_depth = 0.0;
    FreeLoadProjection::Type m_projection = FreeLoadProjection::kNone;
    std::set<unsigned int> m_affectedNos;
    LoadNature m_nature = kLoadNatureNone;
};

} // namespace orv::elem
