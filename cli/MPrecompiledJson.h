#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <vector>

/// Part of the precompiled headers of what works with JSON (cmake/Precompile.cmake), and of nothing
/// else: what is called here is instantiated, and in a debug build compiled, once for all of them.
/// Nobody calls it.
namespace MPrecompiledJson {

template <class Json>
std::string Use(const std::string& p_strText) {
    Json objJson = Json::parse(p_strText, nullptr, false);
    objJson["literal"] = "text";
    objJson["text"] = p_strText;
    objJson[p_strText] = 1;
    objJson["count"] = std::int64_t{1};
    objJson["size"] = std::size_t{1};
    objJson["number"] = 1.5;
    objJson["flag"] = true;
    objJson["nothing"] = nullptr;
    objJson["list"] = Json::array();
    objJson["list"].push_back(
        {{"literal", "text"}, {"text", p_strText}, {"count", 1}, {"flag", true}});
    objJson["texts"] = std::vector<std::string>{p_strText};
    objJson["object"] = Json::object();
    for (const auto& [strKey, objValue] : objJson.items()) {
        if (objValue.is_object() && objValue.contains(strKey) && objValue.at(strKey) != objJson) {
            objJson.erase(strKey);
        }
    }
    for (const Json& objValue : objJson) {
        if (objValue.is_string() && objValue == "text") {
            return objValue.template get<std::string>();
        }
        if (objValue == 1 || objValue == true || objValue == p_strText || objValue == nullptr) {
            return objValue.value("text", "") + objValue.value("text", p_strText);
        }
    }
    if (objJson.at("count").template get<int>() == 1 && objJson["flag"].template get<bool>()) {
        return std::to_string(objJson["number"].template get<double>()) +
               std::to_string(objJson["texts"].template get<std::vector<std::string>>().size());
    }
    return objJson.dump(2) + objJson.dump();
}

inline std::string UseEvery(const std::string& p_strText) {
    return Use<nlohmann::json>(p_strText) + Use<nlohmann::ordered_json>(p_strText);
}

}  // namespace MPrecompiledJson
