#pragma once

#include "entities/text.h"

// A text that belongs to a block reference and fills one of the block's attribute definitions.
class AcDbAttribute : public AcDbText {
public:
    ACRX_DECLARE_MEMBERS(AcDbAttribute);
    AcDbAttribute();
    AcDbAttribute(const AcGePoint3d& position, const ACHAR* text, const ACHAR* tag,
                  AcDbObjectId style = AcDbObjectId());

    // Getters need read; setters need write. The name of the definition, for the caller to give back with
    // acutDelString.
    ACHAR* tag() const;
    const ACHAR* tagConst() const;
    // eInvalidInput for null.
    Acad::ErrorStatus setTag(const ACHAR* tag);
    Adesk::Boolean isInvisible() const;
    Acad::ErrorStatus setInvisible(Adesk::Boolean invisible);
    Adesk::Boolean isConstant() const;
    Adesk::Boolean isVerifiable() const;
    Adesk::Boolean isPreset() const;
    Adesk::UInt16 fieldLength() const;
    Acad::ErrorStatus setFieldLength(Adesk::UInt16 length);

protected:
    Adesk::Boolean subWorldDraw(AcGiWorldDraw* worldDraw) override;
    void readMore(AcDbDwgFiler& filer) override;
    void writeMore(AcDbDwgFiler& filer) const override;

private:
    struct Fields {
        AcString tag;
        Adesk::UInt16 fieldLength = 0;
        Adesk::UInt8 flags = 0; // 1 invisible, 2 constant, 4 to be verified, 8 preset
    };
    template <class F, class Stream>
    static void fileFields(F& fields, Stream& stream);
    bool flag(Adesk::UInt8 mask) const;
    Fields m_fields;
};
