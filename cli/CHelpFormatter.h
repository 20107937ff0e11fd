#pragma once

#include <CLI/CLI.hpp>

#include <string>

/// The help of the program and of its commands, made from their tables: what it is for, how it is
/// called, arguments, options, examples; in lines of at most 80 characters.
class CHelpFormatter : public CLI::FormatterBase {
public:
    [[nodiscard]] std::string make_help(const CLI::App* p_objTable, std::string p_strName,
                                        CLI::AppFormatMode p_iMode) const override;
};
