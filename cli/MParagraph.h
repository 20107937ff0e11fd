#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text in lines of a given width, in characters.
namespace MParagraph {

/// p_strText broken at its blanks into lines of at most p_iWidth characters; a longer word has a
/// line of its own. Lines that p_strText has already stay. With p_iWidth 0 nothing is broken. At
/// least one line.
std::vector<std::string> Wrap(std::string_view p_strText, std::size_t p_iWidth);

/// p_strText filled up with blanks to p_iWidth characters.
std::string Pad(std::string_view p_strText, std::size_t p_iWidth);

}  // namespace MParagraph
