#pragma once

#include "base/blob.h"
#include "base/export.h"
#include "base/tr1_memory.h"
#include "dbx/doc/converter.h"
#include "dbx/doc/persistent_system_info.h"
#include "dbx/doc/settings_record.h"
#include "dbx/doc/system_enums.h"
#include "dbx/doc/system_record.h"
#include "dbx/elem/property_owner.h"
#include "orvshape/settings.h"

#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <cstddef>
#include <string>

namespace orv {

class LogStream;
namespace cdb {
struct ICdb;
}

// One structural system of a drawing: its kind, gravity, extents, unit, axes and settings, as its store's
// records tell them. Shared through boost::shared_ptr; SystemManager makes one for each store and fills it.
// Lengths and points of the drawing are in WCS, those of the store in its own axes and unit.
//
// What is told of the record 10/0 comes from its bytes as they were read. A system without that record
// reports each question for it ("!m_data_10_0.is_empty()"), a change of the box too, and answers as each
// operation says; fields that a short record does not reach are zero and cannot be set. Nothing throws,
// except what updateVisFrom and a listener of the log throw. For the host's main thread.
class TALDORK_API System {
public:
    // Of the layers that elements are grouped by.
    enum GroupLayerMode : int { kGroupLayerModeDefault = 1 };

    System();
    ~System();

    System(const System&) = delete;
    System& operator=(const System&) = delete;

    // The kind; RAUM, with a report, for a number that stands for none, and without a record.
    SYSTEM get_type() const;
    SYSTEM get_system() const { return get_type(); }
    static SYSTEM get_type(const tagCDB_SYST& syst);
    // Always 0.
    ZUSTAND get_zustand() const { return ZUSTAND(); }
    // Always false.
    bool isPrestressed() const { return false; }
    GroupLayerMode getGroupLayerMode() const { return kGroupLayerModeDefault; }

    // The axis that gravity acts along in the store, as the record has it; kGravityNone, without a report,
    // if there is no record. Numbers that are no axis are reported; those outside -3 to 3 give kGravityNone.
    GravityOrientation gravityDirection() const;
    // The direction of gravity in the drawing, which goes by the kind alone: -Y for a plane system, else -Z.
    static AcGeVector3d gravityDirectionVectorWcs(SYSTEM type);
    AcGeVector3d gravityDirectionVectorWcs() const { return gravityDirectionVectorWcs(get_type()); }
    AcGeVector3d gravityDirectionVectorWcs2() const { return gravityDirectionVectorWcs(get_type()); }
    // The same in the store's axes, of length 1.
    AcGeVector3d gravityDirectionVector() const;

    // 10000 without a record.
    int get_igdiv() const;
    // The highest node number and the number of nodes; 0 without a record, which a new value does not make.
    int get_sys_maxkn() const;
    void set_sys_maxkn(int number);
    int get_sys_anzkn() const;
    void set_sys_numkn(int number);
    void set_sys_anzkn(int number) { set_sys_numkn(number); }

    // The box of the system in the store. From (0, 0, 0) to (20, 20, 0) without a record.
    void getExtents(AcGePoint3d& min, AcGePoint3d& max) const;
    // Its two corners in the drawing. A turn between the axes may put the first above the second.
    void getExtentsWCS(AcGePoint3d& min, AcGePoint3d& max) const;
    // Sets the box from two corners of the drawing. Each axis in which they are in the wrong order is
    // reported; they are stored all the same. Nothing without a record.
    void set_sys_box(const AcGePoint3d& min, const AcGePoint3d& max);
    // Makes a box that is nothing but the origin 20 long in the store's x and y. Nothing without a record.
    void setDefaultExtents();

    // The store's axes as the drawing sees them, of length 1; its origin; the transform from WCS to that
    // frame.
    void getCoordinateSystem(AcGeVector3d& x, AcGeVector3d& y, AcGeVector3d& z) const;
    void getCoordinateSystem(AcGePoint3d& origin, AcGeVector3d& x, AcGeVector3d& y, AcGeVector3d& z) const;
    void getCoordinateSystem(AcGeMatrix3d& matrix) const;
    // The rotation from the drawing's axes to the store's.
    const AcGeMatrix3d& xformWcs2Cdb() const { return m_xformWcs2Cdb; }

    // A length of the drawing times this is the length in the store.
    double scaleWcs2Cdb() const;
    // The other way round; 1 for a scale of 0. A scale that is not above 0 is reported.
    double scaleCdb2Wcs() const;
    // The drawing's unit of length; see DrawingUnit.
    int drawingUnit() const { return m_sysInfo->drawingUnit; }
    const Converter& converter() const { return m_converter; }

    // False for every system that this module makes.
    bool editable() const { return m_editable; }

    double pointSize() const { return m_settingsRecord.pointSize; }
    void setPointSize(double size) { m_settingsRecord.pointSize = size; }
    const settings::Settings& visSettings() const { return m_visSettings; }
    settings::Settings& visSettings() { return m_visSettings; }
    // Values by name, such as "project.name" and "designcode.name".
    const property_owner<std::string>& properties() const { return m_properties; }
    property_owner<std::string>& properties() { return m_properties; }

    // Takes over 10/0, 10/102 and 0/98, and derives axes, scale and converter; properties stay. False, with
    // nothing but the record 10/0 changed (it is gone), if the store has no 10/0. Damaged records are
    // reported and read as far as they go.
    bool updateFrom(cdb::ICdb& db);
    // Writes 10/102 and 10/0. False, with a report, if the store is not open or does not take 10/0. Without a
    // record that is reported, and 10/102 alone is written: true.
    bool updateTo(cdb::ICdb& db);
    // Takes over the graphic settings of 10/100, or the defaults if there are none. True. Throws
    // orv::Exception "filer error" for a record that ends early; what was read until then is set.
    bool updateVisFrom(cdb::ICdb& db);
    // Writes 10/100. False, with a report, if the store is not open or does not take it.
    bool updateVisTo(cdb::ICdb& db);
    // Takes over 10/101, or the defaults for what it does not hold. True.
    bool updateSettingsFrom(cdb::ICdb& db);
    // Writes 10/101, whether the store takes it or not. True.
    bool updateSettingsTo(cdb::ICdb& db);

private:
    // The record with zeros behind its end; all zeros if there is none.
    typeCDB_SYST record() const;
    // Writes a field of the record, by its offset, unless the record is too short for the whole of it.
    void setField(std::size_t offset, const void* value, std::size_t size);
    void setBoxCorner(std::size_t offset, const AcGePoint3d& corner);

    void deriveTransform();
    void correctMask();
    void readSymbolSetup(const cdb::ICdb& db, LogStream& trace);
    void scaleVisSettings();

    Blob m_data_10_0;
    settings::Settings m_visSettings;
    std::tr1::shared_ptr<PersistentSystemInfo> m_sysInfo; // never null
    AcGeMatrix3d m_xformWcs2Cdb;
    bool m_editable = false;
    Converter m_converter;
    SettingsRecord m_settingsRecord;
    property_owner<std::string> m_properties;
};

} // namespace orv
