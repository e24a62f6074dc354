#include "Tools/Table.h"

#include <gtest/gtest.h>

using orvapp::Table;

TEST(Table, AlignsNumbersRightAndTextLeft) {
    Table table({{"Name"}, {"Nodes", Table::RIGHT}, {"Kind"}});
    table.addRow({"STEEL", "7", "time"});
    table.addRow({"ALUMINIUM", "123456", "mode"});
    EXPECT_EQ(table.text(), "  Name        Nodes  Kind\n"
                            "  STEEL           7  time\n"
                            "  ALUMINIUM  123456  mode\n");
}

TEST(Table, ShowsItsTitlesWithoutRows) {
    EXPECT_EQ(Table({{"Index", Table::RIGHT}, {"Name"}}).text(), "  Index  Name\n");
}

TEST(Table, EndsNoLineWithBlanks) {
    Table table({{"Id", Table::RIGHT}, {"Name"}, {"Longer title"}});
    table.addRow({"1", "a", ""});
    table.addRow({"2", "", ""});
    EXPECT_EQ(table.text(), "  Id  Name  Longer title\n"
                            "   1  a\n"
                            "   2\n");
}

TEST(Table, CountsCharactersNotBytes) {
    Table table({{"Name"}, {"N", Table::RIGHT}});
    table.addRow({"Träger", "1"});
    table.addRow({"Balken", "2"});
    EXPECT_EQ(table.text(), "  Name    N\n"
                            "  Träger  1\n"
                            "  Balken  2\n");
}

TEST(Table, KeepsARowOnOneLine) {
    Table table({{"Name"}});
    table.addRow({"two\nlines"});
    EXPECT_EQ(table.text(), "  Name\n"
                            "  two?lines\n");
}

TEST(Table, FillsShortRows) {
    Table table({{"A"}, {"B"}});
    table.addRow({"1"});
    EXPECT_EQ(table.text(), "  A  B\n"
                            "  1\n");
}
