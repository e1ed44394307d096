// The operations of System that exchange it with a store.

#include "app/log_stream.h"
#include "base/assert.h"
#include "dbx/cdb/icdb.h"
#include "dbx/cdb/read_blob.h"
#include "dbx/doc/ORV_CCSysPar.h"
#include "dbx/doc/symbol_setup.h"
#include "dbx/doc/system.h"
#include "dbx/doc/system_transform.h"
#include "dbx/doc/visual_settings.h"
#include "dbx/serArchives.h"

#include <algorithm>
#include <cstring>

namespace orv {

using cdb::CD_ERR_NONE;
using cdb::cd_error_t;
using cdb::kFirstRecord;

namespace {

constexpr const char* kChannel = "sys";

// Lays the bytes of a stored record over a plain structure. What they do not reach stays.
template <class Record>
void layOver(Record& target, const Blob& bytes) {
    if (!bytes.is_empty())
        std::memcpy(&target, bytes.data(), std::min(bytes.size(), sizeof target));
}

// Older records tell the scale by the unit alone.
void upgrade(PersistentSystemInfo& info) {
    const double* const scale = detail::scaleOfUnit(info.drawingUnit);
    if (scale != nullptr)
        info.drawing_unit_wcs2cdb = *scale;
    else
        ORV_ASSERT(0);
}

// From 10/102, or where there is none from the length of the store's axes. `info` has its defaults.
void readSystemInfo(PersistentSystemInfo& info, const cdb::ICdb& db, const typeCDB_SYST& syst,
                    LogStream& trace) {
    const Blob stored = cdb::readBlob(db, 10, 102, kFirstRecord);
    if (stored.is_empty()) {
        trace << "10/102: does not exist. updating from 10/0.";
        info.drawing_unit_wcs2cdb = detail::measuredScale(syst.m_tg);
        info.drawingUnit = detail::unitOfScale(info.drawing_unit_wcs2cdb);
        return;
    }
    trace << "10/102 exists.";
    layOver(info, stored);
    if (info.version < PersistentSystemInfo::kVersion) {
        trace << "10/102: upgrading from previous version.";
        upgrade(info);
    }
    info.version = PersistentSystemInfo::kVersion;
}

} // namespace

bool System::updateFrom(cdb::ICdb& db) {
    // No line feed ends what is told here: it is one message, sent when all is done.
    LogStream trace(kChannel);
    m_data_10_0 = cdb::readBlob(db, 10, 0, kFirstRecord);
    if (m_data_10_0.is_empty()) {
        trace << "no system settings 10/0 available!";
        return false;
    }
    const typeCDB_SYST syst = record();
    // The texts of condition and values are known to others as they stand.
    // clang-format off
    ORV_ASSERT(m_data_10_0.size() > (offsetof(typeCDB_SYST,m_tg) + sizeof((syst).m_tg)))
        (sizeof((syst).m_tg))(offsetof(typeCDB_SYST,m_tg)).error("10/0 system entry is corrupt.");
    // clang-format on
    // Ahead of the reading: should that fail, the unit is not that of an earlier store.
    m_sysInfo.reset(new PersistentSystemInfo);
    readSystemInfo(*m_sysInfo, db, syst, trace);
    deriveTransform();
    correctMask();
    m_converter.prepare(m_xformWcs2Cdb, m_sysInfo->drawing_unit_wcs2cdb);
    trace << "iprob = " << syst.iprob;
    readSymbolSetup(db, trace);
    scaleVisSettings();
    return true;
}

void System::deriveTransform() {
    const AcGeVector3d storeGravity = detail::gravityVectorCdb(gravityDirection());
    const AcGeVector3d drawingGravity = gravityDirectionVectorWcs(get_type());
    m_xformWcs2Cdb = detail::rotationWcs2Cdb(drawingGravity, storeGravity);
}

// Who wrote the record may have left it as it was for another kind of system.
void System::correctMask() {
    const std::int32_t igres = ORV_CCSysPar::get_igres(get_type());
    setField(offsetof(typeCDB_SYST, igres), &igres, sizeof igres);
}

void System::readSymbolSetup(const cdb::ICdb& db, LogStream& trace) {
    const Blob newVisData = cdb::readBlob(db, 0, 98, kFirstRecord);
    if (newVisData.is_empty())
        return;
    // clang-format off
    ORV_ASSERT(newVisData.size() > (offsetof(legacy::typeSymbolSetup,globalScalingValue) + sizeof((*newVisData.cast<legacy::typeSymbolSetup*>()).globalScalingValue)))
        (sizeof((*newVisData.cast<legacy::typeSymbolSetup*>()).globalScalingValue))(offsetof(legacy::typeSymbolSetup,globalScalingValue))
        .error("0/98 entry is corrupt.");
    // clang-format on
    legacy::typeSymbolSetup setup{};
    layOver(setup, newVisData);
    trace << "visual: db version=" << setup.version;
    m_visSettings.setSwitch(61, setup.switch61 > 0);
    m_visSettings.setSwitch(62, setup.switch62 > 0);
    m_visSettings.setSwitch(63, setup.switch63 > 0);
    m_visSettings.setSize(151, static_cast<double>(setup.size151));
    m_visSettings.setSize(152, static_cast<double>(setup.size152));
    m_visSettings.setSize(153, static_cast<double>(setup.size153));
    m_visSettings.setSize(154, setup.size154);
    m_visSettings.setSize(155, static_cast<double>(setup.size155));
}

// Sizes are lengths of the store, and seen in the drawing.
void System::scaleVisSettings() {
    m_visSettings.scaleBy(m_visSettings.getSize(1) * m_converter.fromCdb(1.0));
}

bool System::updateTo(cdb::ICdb& db) {
    ORV_ASSERT(db.isOpen());
    if (!db.isOpen())
        return false;
    db.write(10, 102, m_sysInfo.get(), sizeof *m_sysInfo, kFirstRecord);
    ORV_ASSERT(!m_data_10_0.is_empty());
    if (m_data_10_0.is_empty())
        return true;
    const cd_error_t err = db.write(10, 0, m_data_10_0.data(), m_data_10_0.size(), kFirstRecord);
    ORV_ASSERT(err == CD_ERR_NONE);
    return err == CD_ERR_NONE;
}

bool System::updateVisFrom(cdb::ICdb& db) {
    LogStream trace(kChannel);
    const Blob stored = cdb::readBlob(db, 10, 100, kFirstRecord);
    if (stored.is_empty()) {
        trace << "visual: defaulting\n";
        settings::applyVisDefaults(m_visSettings, m_visSettings.getVersion(), true);
    } else {
        trace << "visual: loading\n";
        serialization::BinaryInArchive archive(stored.data(), stored.size());
        const int version = settings::readVis(archive, m_visSettings);
        ORV_ASSERT(version > 0)(version).debug("failed to load vis settings");
        settings::applyVisDefaults(m_visSettings, version, false);
    }
    scaleVisSettings();
    return true;
}

bool System::updateVisTo(cdb::ICdb& db) {
    ORV_ASSERT(db.isOpen());
    if (!db.isOpen())
        return false;
    serialization::BinaryOutArchive archive;
    settings::writeVis(archive, m_visSettings);
    const cd_error_t err =
        db.write(10, 100, archive.buffer().data(), static_cast<std::size_t>(archive.offset()), kFirstRecord);
    ORV_ASSERT(err == CD_ERR_NONE);
    return err == CD_ERR_NONE;
}

bool System::updateSettingsFrom(cdb::ICdb& db) {
    m_settingsRecord = SettingsRecord();
    layOver(m_settingsRecord, cdb::readBlob(db, 10, 101, kFirstRecord));
    return true;
}

bool System::updateSettingsTo(cdb::ICdb& db) {
    db.write(10, 101, &m_settingsRecord, sizeof m_settingsRecord, kFirstRecord);
    return true;
}

} // namespace orv
