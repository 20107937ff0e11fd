#pragma once

#include <memory>
#include <string>

/// A JSON schema of the documentation, to hold outputs against.
class CJsonSchema {
public:
    /// @param p_strName the file's name in docs/json. Throws when it cannot be read.
    explicit CJsonSchema(const std::string& p_strName);
    ~CJsonSchema();
    CJsonSchema(const CJsonSchema&) = delete;
    CJsonSchema& operator=(const CJsonSchema&) = delete;

    /// What of p_strText is against the schema, or that it is not JSON; empty when it is right.
    [[nodiscard]] std::string Complaint(const std::string& p_strText) const;

    /// The schema of what the program prints with --json, read once.
    static const CJsonSchema& OfOutputs();

private:
    struct Data;
    std::unique_ptr<Data> m_objData;
};
