#pragma once

#include <string>

/// The command line's part of docs/faults.md, made of the files with what is expected.
namespace MFaultPage {

/// @param p_strFolder the files' folder.
std::string Part(const std::string& p_strFolder);

/// What stands on a page between the marks of the command line's part, marks included; empty when
/// there are none.
std::string PartOf(const std::string& p_strPage);

/// A file's bytes; throws when it cannot be read.
std::string Content(const std::string& p_strPath);

}  // namespace MFaultPage
