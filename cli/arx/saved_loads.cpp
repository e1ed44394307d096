#include "cli/arx/saved_loads.h"

#include "cli/common/failure.h"
#include "cli/common/messages.h"

#include "dbx/keyvalue/locale_text.h"
#include "dbx/keyvalue_serialization.h"
#include "platform/registry.h"
#include "platform/registry_key.h"
#include "platform/system_messages.h"
#include "platform/text.h"

#include <iostream>
#include <sstream>

namespace taldork::cli {

using orv::elem::LoadData;

namespace {

constexpr const char* basePath = "Software\\Taldork\\Loads";

/// The longest name that a walk through the tree takes.
constexpr std::size_t longestName = platform::registry::kLongestKeyName - 1;

/// Takes what the module writes on wide standard error, where it tells what the registry refuses. It must not
/// get there itself: once a wide text was written, the system takes no plain text there any more.
class WideErrors {
public:
    WideErrors() : m_before(std::wcerr.rdbuf(m_text.rdbuf())) {}
    ~WideErrors() { std::wcerr.rdbuf(m_before); }
    WideErrors(const WideErrors&) = delete;
    WideErrors& operator=(const WideErrors&) = delete;

    /// Throws Failure if there was any.
    void check(const std::string& subject) const {
        const std::wstring text = m_text.str();
        if (!text.empty())
            throw Failure(oneLine(subject), oneLine(platform::toUtf8(text.substr(0, text.find(L'\n')))));
    }

private:
    std::wostringstream m_text;
    std::wstreambuf* m_before;
};

std::wstring pathOf(const std::string& name) {
    return orv::widenByLocale(basePath) + L"\\" + platform::fromUtf8(name);
}

/// As the cursor takes it.
std::string nodeOf(const std::string& name) { return orv::narrowByLocale(platform::fromUtf8(name)); }

void checkStatus(int status, const std::string& subject) {
    if (status != platform::registry::kDone)
        throw Failure(oneLine(subject), platform::toUtf8(platform::systemMessage(status)));
}

void needSavedLoad(const std::string& name) {
    if (!isSavedLoad(name))
        throw Failure(oneLine(name),
                      "no load of that name is saved ('taldork settings list' names those that are)");
}

} // namespace

std::string checkKeptText(const std::string& text) {
    const std::wstring wide = platform::fromUtf8(text);
    return orv::widenByLocale(orv::narrowByLocale(wide)) == wide
               ? ""
               : "'" + text + "' has characters that settings cannot keep";
}

std::string checkLoadName(const std::string& name) {
    if (name.empty())
        return "a saved load needs a name";
    if (name.find('\\') != std::string::npos)
        return "'" + name + "' has a backslash, which a name cannot have";
    if (platform::toUtf16(platform::fromUtf8(name)).size() > longestName)
        return "a name has at most " + std::to_string(longestName) + " characters";
    return checkKeptText(name);
}

std::vector<std::string> savedLoadNames() {
    std::vector<std::wstring> found;
    const int status = platform::registry::listKeys(orv::widenByLocale(basePath), found);
    if (status != platform::registry::kNotFound)
        checkStatus(status, "settings");
    std::vector<std::string> names;
    for (const std::wstring& name : found)
        names.push_back(platform::toUtf8(name));
    return names;
}

bool isSavedLoad(const std::string& name) { return platform::registry::keyExists(pathOf(name)); }

LoadData readSavedLoad(const std::string& name) {
    needSavedLoad(name);
    const WideErrors errors;
    orv::KeyValueTreeReaderWriter cursor(basePath);
    LoadData data;
    LoadData::load(cursor.nodeBegin(nodeOf(name)), data);
    errors.check(name);
    return data;
}

void writeSavedLoad(const std::string& name, const LoadData& data) {
    const WideErrors errors;
    orv::KeyValueTreeReaderWriter cursor(basePath);
    LoadData::save(cursor.nodeBegin(nodeOf(name)), data);
    errors.check(name);
}

void deleteSavedLoad(const std::string& name) {
    needSavedLoad(name);
    checkStatus(platform::registry::deleteKey(pathOf(name)), name);
}

} // namespace taldork::cli
