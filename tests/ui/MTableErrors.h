#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

/// What the window's tables are put through: rows left out, written twice, and names misspelt.
namespace MTableErrors {

/// Expects p_fnUse to throw a std::logic_error whose text names p_strName.
inline void ExpectTold(const std::string& p_strName, const std::function<void()>& p_fnUse) {
    try {
        p_fnUse();
        ADD_FAILURE() << "nothing is told about " << p_strName;
    } catch (const std::logic_error& objError) {
        EXPECT_THAT(objError.what(), ::testing::HasSubstr("\"" + p_strName + "\""));
    }
}

/// Uses the table without each of its rows in turn, with each of them twice, and with each of their
/// names misspelt; expects to be told the control each time.
/// @param p_fnName a reference to a row's name.
/// @param p_fnUse  uses the table that it is given.
template <typename Row, typename Name, typename Use>
void ExpectAllTold(const std::vector<Row>& p_objRows, const Name& p_fnName, const Use& p_fnUse) {
    ASSERT_FALSE(p_objRows.empty());
    for (std::size_t i = 0; i < p_objRows.size(); ++i) {
        Row objRow = p_objRows[i];
        const std::string strName(p_fnName(objRow));
        const auto iPlace = static_cast<std::ptrdiff_t>(i);

        std::vector<Row> objWithout = p_objRows;
        objWithout.erase(objWithout.begin() + iPlace);
        ExpectTold(strName, [&] { p_fnUse(objWithout); });

        std::vector<Row> objTwice = p_objRows;
        objTwice.push_back(objRow);
        ExpectTold(strName, [&] { p_fnUse(objTwice); });

        std::vector<Row> objMisspelt = p_objRows;
        const std::string strMisspelt = strName + "x";
        p_fnName(objMisspelt[i]) = strMisspelt.c_str();
        ExpectTold(strMisspelt, [&] { p_fnUse(objMisspelt); });

        std::vector<Row> objUnnamed = p_objRows;
        p_fnName(objUnnamed[i]) = "";
        ExpectTold("", [&] { p_fnUse(objUnnamed); });
    }
}

}  // namespace MTableErrors
