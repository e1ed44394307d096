#pragma once

#include "dbmain.h"

#include <string>

// A plain object with one text, to be kept in dictionaries.
class TestRecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(TestRecord);
    TestRecord() = default;
    explicit TestRecord(std::wstring text) : m_text(std::move(text)) {}

    const std::wstring& text() const {
        assertReadEnabled();
        return m_text;
    }
    void setText(std::wstring text) {
        assertWriteEnabled();
        m_text = std::move(text);
    }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    std::wstring m_text;
};

// Registers the class once.
void registerTestRecord();
