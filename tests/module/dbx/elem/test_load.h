#pragma once

#include "dbmain.h"
#include "dbx/elem/load_base.h"

#include <string>

// A load as an entity by itself, and its data as bytes written by hand.
namespace testing_support {

// A load that files AcDbEntity's fields and the element's stream, and nothing else.
class TestLoad : public AcDbEntity, public orv::elem::LoadBase {
public:
    ACRX_DECLARE_MEMBERS(TestLoad);
    TestLoad();

    // Calls of the two checks through the element's side.
    mutable int readChecks = 0;
    int writeChecks = 0;

    // Those of the base that are protected, as a plugin has them in the open.
    using LoadBase::onLoad;
    using LoadBase::onSave;
    bool load(orv::serialization::IInArchive& archive, unsigned int version) {
        return onLoad(archive, version);
    }
    bool save(orv::serialization::IOutArchive& archive) const { return onSave(archive); }
    bool load(const orv::KeyValueStorage& storage) { return ElementBase::load(storage); }
    bool save(orv::KeyValueStorage& storage) const { return ElementBase::save(storage); }

    // A status instead of an exception.
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

    void acdb_assertWriteEnabled() override;
    void acdb_assertReadEnabled() const override;
    AcRxClass* acdb_isA() const override;
    int acdb_isNewObject() const override;
    AcDbObjectId acdb_id() override;
};

// The host must be started.
void registerTestLoad();

// The pieces of a load's data: the type 12 and the class 3; the category 5 and a line load.
constexpr char kLoadType[] = "0c 00 03 00";
constexpr char kLoadCategory[] = "05 00 01 00";
// Two vertices: everything else than by default and the value 2.5 but for the text; the origin with -4.
constexpr char kTwo[] = "02 00 00 00";
constexpr char kFirstVertex[] = "02 07 00 00 00 "
                                "00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 40 00 00 00 00 00 00 e0 bf "
                                "00 00 00 00 00 00 04 40 09 00 00 00 01 00 00 00 00 00 00 d0 3f";
constexpr char kLastVertex[] = "01 00 00 00 00 "
                               "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
                               "00 00 00 00 00 00 10 c0 00 00 00 00 00 00 00 00 00 00 00 00 00";
// "a", "bc" and none.
constexpr char kTextA[] = "01 00 00 00 61 00 00 00";
constexpr char kTextBc[] = "02 00 00 00 62 00 00 00 63 00 00 00";
constexpr char kNoText[] = "00 00 00 00";
// The load cases 4 and 7, the unit "kN".
constexpr char kCases[] = "02 00 00 00 04 00 00 00 07 00 00 00";
constexpr char kNoCases[] = "00 00 00 00";
constexpr char kUnit[] = "02 00 00 00 6b 00 00 00 4e 00 00 00";
constexpr char kYes[] = "01";
constexpr char kNo[] = "00";
constexpr char kLoadEnd[] = "4d 6a 7e fd";

// "05 00 00 00"
std::string loadVersion(unsigned int number);
// Data of a version from 1 to 8 with all of the pieces that it has, and both vertices. The texts of the two
// are "a" and "bc"; the load is uniform and no polygon.
std::string loadBody(unsigned int version);

} // namespace testing_support
