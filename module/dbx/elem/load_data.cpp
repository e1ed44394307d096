#include "dbx/elem/load_data.h"

#include "dbx/elem/vertex_list_util.h"
#include "dbx/keyvalue/locale_text.h"
#include "dbx/keyvalue_serialization.h"
#include "platform/text.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace orv::elem {

namespace {

constexpr const char* kCasePrefix = "loadCases/";

// Writes whether a value is there, and the value if it is. An enumeration goes as its number.
template <class Written, class T>
void writeOptional(KeyValueTreeReaderWriter& rw, const std::string& key, const boost::optional<T>& value) {
    writeKeyValue(rw, "has_" + key, value.has_value());
    if (value)
        writeKeyValue(rw, key, static_cast<Written>(*value));
}

// Reads it back; one that is not said to be there stays as it was.
template <class Written, class T>
void readOptional(KeyValueTreeReaderWriter& rw, const std::string& key, Written defaultValue,
                  boost::optional<T>& value) {
    if (readKeyValue(rw, "has_" + key, false))
        value = static_cast<T>(readKeyValue(rw, key, defaultValue));
}

void writeLoadCases(KeyValueTreeReaderWriter& rw, const std::set<unsigned int>& cases) {
    writeKeyValue(rw, std::string(kCasePrefix) + "count", cases.size());
    std::size_t index = 0;
    for (const unsigned int loadCase : cases)
        writeKeyValue(rw, kCasePrefix + std::to_string(index++), loadCase);
}

// The indices below `count` that the cursor's node has a load case for.
std::set<std::uint64_t> presentIndices(KeyValueTreeReaderWriter& rw, std::uint64_t count) {
    std::set<std::uint64_t> indices;
    const std::wstring prefix = platform::foldCase(widenByLocale(kCasePrefix));
    for (registry::iterator entry = rw.get_keyvalue_iterator(); !entry.atEnd(); entry.next()) {
        if (entry.kind() == registry::kSubKey ||
            platform::foldCase(entry.name().substr(0, prefix.size())) != prefix)
            continue;
        const std::string digits = narrowByLocale(entry.name().substr(prefix.size()));
        std::uint64_t index = 0;
        if (boost::conversion::try_lexical_convert(digits, index) && index < count &&
            std::to_string(index) == digits)
            indices.insert(index);
    }
    return indices;
}

// Every index up to the count stands for a load case, 0 for one that the tree lacks. The count comes from
// outside, so it is not counted up to it.
void readLoadCases(KeyValueTreeReaderWriter& rw, std::set<unsigned int>& cases) {
    const std::uint64_t count = readKeyValue<std::uint64_t>(rw, std::string(kCasePrefix) + "count", 0);
    if (count == 0)
        return;
    const std::set<std::uint64_t> indices = presentIndices(rw, count);
    if (indices.size() < count)
        cases.insert(0);
    for (const std::uint64_t index : indices)
        cases.insert(readKeyValue(rw, kCasePrefix + std::to_string(index), 0u));
}

void writeGeometry(KeyValueTreeReaderWriter& rw, const boost::optional<EditTwoVerticesData>& geometry) {
    writeKeyValue(rw, "has_geometryParameters", geometry.has_value());
    if (!geometry)
        return;
    writeKeyValue(rw, "geometryParameters/p1", geometry->m_p1);
    writeKeyValue(rw, "geometryParameters/p2", geometry->m_p2);
}

void readGeometry(KeyValueTreeReaderWriter& rw, boost::optional<EditTwoVerticesData>& geometry) {
    if (!readKeyValue(rw, "has_geometryParameters", false))
        return;
    EditTwoVerticesData read;
    read.m_p1 = readKeyValue(rw, "geometryParameters/p1", 0.0);
    read.m_p2 = readKeyValue(rw, "geometryParameters/p2", 1.0);
    geometry = read;
}

bool isSamePosition(double left, double right) { return std::abs(left - right) < kLoadValueTolerance; }

// A missing value is like a zero.
bool isEqualOptional(const boost::optional<double>& left, const boost::optional<double>& right) {
    return isEqualLoadValue(left.value_or(0.0), right.value_or(0.0));
}

} // namespace

bool operator==(const EditTwoVerticesData& left, const EditTwoVerticesData& right) {
    return isSamePosition(left.m_p1, right.m_p1) && left.m_mode1 == right.m_mode1 &&
           isSamePosition(left.m_p2, right.m_p2) && left.m_mode2 == right.m_mode2 &&
           left.m_element == right.m_element && isEqualLoadValue(left.m_length, right.m_length);
}

LoadData::LoadData() = default;
LoadData::LoadData(const LoadData& other) = default;
LoadData& LoadData::operator=(const LoadData& other) = default;
LoadData::~LoadData() = default;

void LoadData::save(KeyValueTreeReaderWriter& rw, const LoadData& data) {
    rw.keyvalue("name", narrowByLocale(data.m_name));
    writeLoadCases(rw, data.m_loadCases);
    writeKeyValue(rw, "kind", static_cast<int>(data.m_kind));
    writeKeyValue(rw, "type", data.m_type);
    writeOptional<int>(rw, "distribution", data.m_distribution);
    writeOptional<int>(rw, "distributionCurve", data.m_distributionCurve);
    writeKeyValue(rw, "value1", data.m_value1);
    writeOptional<double>(rw, "value2", data.m_value2);
    writeOptional<double>(rw, "value3", data.m_value3);
    writeGeometry(rw, data.m_geometry);
}

void LoadData::load(KeyValueTreeReaderWriter& rw, LoadData& data) {
    data.m_name = widenByLocale(rw.get_keyvalue("name", std::string()));
    readLoadCases(rw, data.m_loadCases);
    data.m_kind = static_cast<LOAD_KIND>(readKeyValue(rw, "kind", static_cast<int>(data.m_kind)));
    data.m_type = readKeyValue(rw, "type", data.m_type);
    readOptional(rw, "distribution", 0, data.m_distribution);
    readOptional(rw, "distributionCurve", 1, data.m_distributionCurve);
    data.m_value1 = readKeyValue(rw, "value1", data.m_value1);
    readOptional(rw, "value2", 0.0, data.m_value2);
    readOptional(rw, "value3", 0.0, data.m_value3);
    readGeometry(rw, data.m_geometry);
}

bool operator==(const LoadData& left, const LoadData& right) {
    return left.m_name == right.m_name && left.m_loadCases == right.m_loadCases &&
           left.m_kind == right.m_kind && left.m_type == right.m_type &&
           left.m_distribution == right.m_distribution &&
           left.m_distributionCurve == right.m_distributionCurve &&
           isEqualLoadValue(left.m_value1, right.m_value1) &&
           isEqualOptional(left.m_value2, right.m_value2) && isEqualOptional(left.m_value3, right.m_value3) &&
           left.m_geometry == right.m_geometry;
}

} // namespace orv::elem
