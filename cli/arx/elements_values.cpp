#include "cli/arx/elements_values.h"

#include "cli/common/handles.h"
#include "cli/common/messages.h"
#include "cli/common/numbers.h"

#include "dbid.h"
#include "gemat3d.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "platform/text.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <typeinfo>

namespace taldork::cli {

namespace {

using Json = nlohmann::ordered_json;

template <class Number>
Json toJson(const Number& number) {
    return number;
}
Json toJson(const std::string& text) { return text; }
Json toJson(const std::wstring& text) { return platform::toUtf8(text); }
Json toJson(const AcDbObjectId& id) { return id.isNull() ? Json() : Json(handleText(id)); }
Json toJson(const AcDbSoftPointerId& id) { return toJson(static_cast<const AcDbObjectId&>(id)); }
Json toJson(const AcGePoint3d& point) { return {point.x, point.y, point.z}; }
Json toJson(const AcGeVector3d& vector) { return {vector.x, vector.y, vector.z}; }
Json toJson(const AcGeMatrix3d& matrix) {
    Json rows = Json::array();
    for (unsigned int row = 0; row < 4; ++row)
        rows.push_back({matrix(row, 0), matrix(row, 1), matrix(row, 2), matrix(row, 3)});
    return rows;
}

template <class T>
Json jsonOf(const boost::any& value) {
    return toJson(boost::any_cast<const T&>(value));
}

struct TypeRow {
    const std::type_info& type;
    const char* word;
    Json (*json)(const boost::any& value);
};

// What properties and trees can hold.
const TypeRow kTypes[] = {
    {typeid(unsigned char), "unsigned char", &jsonOf<unsigned char>},
    {typeid(unsigned short), "unsigned short", &jsonOf<unsigned short>},
    {typeid(unsigned int), "unsigned int", &jsonOf<unsigned int>},
    {typeid(std::uint64_t), "unsigned int64", &jsonOf<std::uint64_t>},
    {typeid(signed char), "signed char", &jsonOf<signed char>},
    {typeid(short), "short", &jsonOf<short>},
    {typeid(int), "int", &jsonOf<int>},
    {typeid(std::int64_t), "int64", &jsonOf<std::int64_t>},
    {typeid(bool), "bool", &jsonOf<bool>},
    {typeid(double), "double", &jsonOf<double>},
    {typeid(std::wstring), "wide text", &jsonOf<std::wstring>},
    {typeid(std::string), "text", &jsonOf<std::string>},
    {typeid(AcGePoint3d), "point", &jsonOf<AcGePoint3d>},
    {typeid(AcGeVector3d), "vector", &jsonOf<AcGeVector3d>},
    {typeid(AcGeMatrix3d), "matrix", &jsonOf<AcGeMatrix3d>},
    {typeid(AcDbObjectId), "id", &jsonOf<AcDbObjectId>},
    {typeid(AcDbSoftPointerId), "soft id", &jsonOf<AcDbSoftPointerId>},
};

std::string plainText(const Json& value) {
    if (value.is_array()) {
        std::string text;
        for (const Json& part : value)
            text += (text.empty() ? "" : part.is_array() ? ", " : " ") + plainText(part);
        return text;
    }
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_number_float())
        return numberText(value.get<double>());
    return value.is_null() ? "-" : value.dump();
}

} // namespace

Json describeValue(const boost::any& value) {
    if (value.empty())
        return {{"type", "none"}, {"value", nullptr}};
    for (const TypeRow& row : kTypes)
        if (row.type == value.type())
            return {{"type", row.word}, {"value", row.json(value)}};
    return {{"type", value.type().name()}, {"value", nullptr}};
}

Json describeProperties(const orv::AcadObjectProperties& properties) {
    Json rows = Json::array();
    for (const auto& [key, property] : properties) {
        Json row = {{"key", key}};
        row.update(describeValue(property ? property->value() : boost::any()));
        rows.push_back(std::move(row));
    }
    return rows;
}

Json describeTree(const orv::PropertyTree& tree) {
    Json rows = Json::array();
    for (const auto& [key, child] : tree) {
        Json row = {{"key", key}};
        row.update(describeValue(child.data()));
        row["children"] = describeTree(child);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string valueText(const Json& value) {
    const auto type = value["type"].get<std::string>();
    if (type == "none")
        return type;
    const bool quoted = value["value"].is_string() && type.find("text") != std::string::npos;
    const std::string text = plainText(value["value"]);
    return oneLine(type + " " + (quoted ? "\"" + text + "\"" : text));
}

} // namespace taldork::cli
