#pragma once

#include "app/dbx_application.h"

// This module's one application.
class TALDORK_API Taldork_DBX_Application final : public orv::DBX_Application {
public:
    Taldork_DBX_Application();
    ~Taldork_DBX_Application();

    // Takes down the modules of the family in their fixed order, then does as the frame does.
    AcRx::AppRetCode On_kUnloadAppMsg(void* packet) override;
    // Hands the drawing that was opened, which is the working one, to the registry of systems. Exceptions as
    // SystemManager::initFromDatabase.
    AcRx::AppRetCode On_kLoadDwgMsg(void* packet) override;
    // Registers the class table.
    AcRx::AppRetCode registerClasses(void* packet) override;

    // The module's application object, which the static initialisation makes.
    static Taldork_DBX_Application& instance();
};
