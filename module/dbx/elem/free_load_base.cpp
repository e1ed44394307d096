#include "dbx/elem/free_load_base.h"

#include "base/assert.h"
#include "base/key_value_storage.h"
#include "base/product_name.h"
#include "dbx/elem/load_base.h"
#include "dbx/elem/load_filing.h"
#include "orvcore/warn_on_new_version.h"

namespace orv::elem {

namespace {

// The first versions that have these.
constexpr unsigned int kHasReference = 2; // and projection and depth
constexpr unsigned int kHasGenericLoad = 4;

template <class Number>
void write32(serialization::IOutArchive& archive, Number number) {
    archive << static_cast<unsigned int>(number);
}

template <class Number>
void read32(serialization::IInArchive& archive, Number& number) {
    unsigned int filed = 0;
    archive >> filed;
    number = static_cast<Number>(filed);
}

} // namespace

FreeLoadBase::FreeLoadBase() = default;
FreeLoadBase::~FreeLoadBase() = default;

void FreeLoadBase::onWorldDraw(AcadWorldDraw& wd, System& system) { GenericLoad::onWorldDraw(wd, system); }

void FreeLoadBase::onViewportDraw(AcadViewportDraw& vd, System& system) {
    GenericLoad::onViewportDraw(vd, system);
}

FreeLoadReference::Type FreeLoadBase::getReferenceType() const {
    assertReadEnabled();
    return m_referenceType;
}

void FreeLoadBase::setReferenceType(FreeLoadReference::Type type) {
    assertWriteEnabled();
    m_referenceType = type;
}

FreeLoadProjection::Type FreeLoadBase::getProjectionType() const {
    assertReadEnabled();
    return m_projection;
}

void FreeLoadBase::setProjectionType(FreeLoadProjection::Type type) {
    assertWriteEnabled();
    requestRefreshGraphics();
    m_projection = type;
}

LoadNature FreeLoadBase::getFreeLoadType() const {
    assertReadEnabled();
    return m_nature;
}

void FreeLoadBase::setFreeLoadType(LoadNature nature) {
    assertWriteEnabled();
    requestRefreshGraphics();
    m_nature = nature;
}

double FreeLoadBase::getDepth() const {
    assertReadEnabled();
    return m_depth;
}

void FreeLoadBase::setDepth(double depth) {
    assertWriteEnabled();
    m_depth = depth;
}

const std::set<unsigned int>& FreeLoadBase::getAffectedNos() const {
    assertReadEnabled();
    return m_affectedNos;
}

void FreeLoadBase::setAffectedNos(const std::set<unsigned int>& numbers) {
    assertWriteEnabled();
    if (&numbers != &m_affectedNos)
        m_affectedNos = numbers;
}

bool FreeLoadBase::save(KeyValueStorage& storage) const { return onSave(storage); }

bool FreeLoadBase::onSave(serialization::IOutArchive& archive) const {
    archive << kVersion;
    if (!GenericLoad::onSave(archive))
        return false;
    write32(archive, m_nature);
    write32(archive, m_projection);
    archive << m_depth;
    write32(archive, m_referenceType);
    writeNumbers(archive, m_affectedNos);
    archive << kMagic;
    return true;
}

bool FreeLoadBase::onLoad(serialization::IInArchive& archive, unsigned int elementVersion) {
    unsigned int version = 0;
    archive >> version;
    ORV_ASSERT(version <= kVersion)(version)(kVersion);
    orv_warnOnNewVersion(version, kVersion, productName());
    if (version > kVersion)
        return false;
    if (version >= kHasGenericLoad && !GenericLoad::onLoad(archive, elementVersion))
        return false;
    readData(archive, version);
    unsigned int magic = 0;
    archive >> magic;
    ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("filing error");
    return magic == kMagic;
}

void FreeLoadBase::readData(serialization::IInArchive& archive, unsigned int version) {
    read32(archive, m_nature);
    if (version >= kHasReference) {
        read32(archive, m_projection);
        archive >> m_depth;
        read32(archive, m_referenceType);
    } else {
        m_referenceType = FreeLoadReference::kGeneral;
        m_projection = FreeLoadProjection::kNone;
        m_depth = 0.0;
    }
    m_affectedNos.clear();
    readNumbers(archive, m_affectedNos);
}

bool FreeLoadBase::onSave(KeyValueStorage& storage) const {
    GenericLoad::onSave(storage);
    std::string prefix;
    LoadBase::createSaveString(getDistribution(), true, prefix);
    storage.set(prefix + "reference_type", static_cast<int>(m_referenceType));
    if (!m_affectedNos.empty()) {
        const std::string list = prefix + "referenced_numbers/";
        storage.set(list + "size", static_cast<int>(m_affectedNos.size()));
        int index = 0;
        for (const unsigned int number : m_affectedNos)
            storage.set(list + std::to_string(index++), static_cast<int>(number));
    }
    storage.set(prefix + "projection_direction", static_cast<int>(m_projection));
    storage.set(prefix + "depth", m_depth);
    return true;
}

} // namespace orv::elem
