#pragma once

#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/export.h"
#include "dbx/doc/ccsys.h"
#include "dbx/doc/system_enums.h"

#include "adsdef.h"
#include "dbmain.h"

// The description of a system in older drawings. It lies under "KELMORAN", the store's name, "SYSTEM" as the
// entry "SYST". docs/design-code.md has what it files.
class TALDORK_API ORV_CCSysPar : public AcDbObject {
public:
    ORV_DECLARE_CLASS(ORV_CCSysPar);

    static constexpr Adesk::Int32 kMagic = 123456789;
    static constexpr Adesk::Int32 kVersion = 7;

    ORV_CCSysPar();
    explicit ORV_CCSysPar(const ccsys& data);
    ~ORV_CCSysPar() override;

    // Copies the data and the binary field; what the object is to its drawing stays.
    ORV_CCSysPar& operator=(const ORV_CCSysPar& other);

    // Needs read.
    void getData(ccsys& data) const;
    // Needs write. The binary field stays: only reading and copying change it.
    void setData(const ccsys& data);

    // 301 for a version above kVersion, and for an exception. Otherwise the filer's status. An object of the
    // time before versions gets its code's name from its norm.
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    // Always at kVersion. `versionText2` is what is filed, whereas reading fills `versionText`.
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    // Reads nothing, and answers the filer's status, unless the class's own mark comes next.
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    // Begins with the boolean true in place of the class's mark, which drawings have always had there. So
    // what is written here is not read back.
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    // The results that an analysis of such a system has, as bits. 0 for a kind without a name.
    static int get_igres(orv::SYSTEM system);
    // The kind of problem, as record 10/0 has it. Depends on the current user coordinate system, see
    // orv_get_nvec. 0 for a kind without a name.
    static int get_iprob(orv::SYSTEM system, orv::ZUSTAND zustand, int flag);

private:
    // A number that is filed as the bytes that it has in memory.
    struct BinaryField {
        BinaryField() = default;
        BinaryField(const BinaryField&) = delete;
        BinaryField& operator=(const BinaryField& other);
        // Takes over up to four bytes of a chunk that has more than one; a shorter one changes nothing.
        void take(const char* bytes, std::size_t length);
        ads_binary chunk() const { return {size, pointer}; }

        Adesk::Int32 value = 0;
        Adesk::Int16 size = sizeof(Adesk::Int32);
        char* pointer = reinterpret_cast<char*>(&value);
    };

    template <class Source>
    Acad::ErrorStatus readItems(Source& source);
    template <class Source>
    void readFixedItems(Source& source);
    template <class Source>
    void readItemsByVersion(Source& source, Adesk::Int32 version);
    template <class Target>
    void writeItems(Target& target) const;
    template <class Target>
    void writeVersionedItems(Target& target) const;

    ccsys m_data;
    BinaryField m_binary;
};
