#include "tests/cli/CJsonSchema.h"

#include <nlohmann/json.hpp>

#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

#include <fstream>
#include <stdexcept>

using Adapter = valijson::adapters::NlohmannJsonAdapter;

struct CJsonSchema::Data {
    nlohmann::json m_objText;
    valijson::Schema m_objSchema;
};

CJsonSchema::CJsonSchema(const std::string& p_strName)
    : m_objData(std::make_unique<Data>()) {
    std::ifstream objFile(std::string(VARDEN_JSON_SCHEMAS) + "/" + p_strName);
    if (!objFile) {
        throw std::runtime_error("no schema " + p_strName);
    }
    m_objData->m_objText = nlohmann::json::parse(objFile);
    valijson::SchemaParser(valijson::SchemaParser::kDraft7)
        .populateSchema(Adapter(m_objData->m_objText), m_objData->m_objSchema);
}

CJsonSchema::~CJsonSchema() = default;

std::string CJsonSchema::Complaint(const std::string& p_strText) const {
    const nlohmann::json objJson = nlohmann::json::parse(p_strText, nullptr, false);
    if (objJson.is_discarded()) {
        return "no JSON: " + p_strText;
    }
    valijson::Validator objValidator;
    valijson::ValidationResults objResults;
    const Adapter objAdapter(objJson);
    if (objValidator.validate(m_objData->m_objSchema, objAdapter, &objResults)) {
        return {};
    }
    std::string strComplaint = "against the schema:";
    valijson::ValidationResults::Error objError;
    while (objResults.popError(objError)) {
        strComplaint += "\n  ";
        for (const std::string& strPart : objError.context) {
            strComplaint += strPart;
        }
        strComplaint += ": " + objError.description;
    }
    return strComplaint + "\n" + p_strText;
}

const CJsonSchema& CJsonSchema::OfOutputs() {
    static const CJsonSchema objSchema("varden.schema.json");
    return objSchema;
}
