#include "cli/CTable.h"

#include <gtest/gtest.h>

TEST(CTable, ColumnsAreAsWideAsTheirWidestCell) {
    CTable objTable({"A", "B", "C"});
    objTable.Add({"one", "\xC3\xBC", "x"});
    objTable.Add({"1", "22", ""});
    EXPECT_EQ(objTable.Text(0), "A    B   C\none  \xC3\xBC   x\n1    22\n");
}

TEST(CTable, TheLastColumnIsBrokenToTheWidth) {
    CTable objTable({"A", "B"});
    objTable.Add({"one", "two three four five six seven"});
    EXPECT_EQ(objTable.Text(26), "A    B\none  two three four five\n     six seven\n");
}

TEST(CTable, ANarrowTerminalBreaksByItself) {
    CTable objTable({"A", "B"});
    objTable.Add({"one", "two three four five six seven"});
    EXPECT_EQ(objTable.Text(10), "A    B\none  two three four five six seven\n");
}

TEST(CTable, ItIsEmptyUntilItHasARow) {
    CTable objTable({"A"});
    EXPECT_TRUE(objTable.IsEmpty());
    objTable.Add({"a"});
    EXPECT_FALSE(objTable.IsEmpty());
}

TEST(CTable, CellsSteerNoTerminal) {
    CTable objTable({"A", "B"});
    objTable.Add({"\x1B[2J", "b"});
    EXPECT_EQ(objTable.Text(0), "A        B\n<1B>[2J  b\n");
}
