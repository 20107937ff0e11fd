#include "simulator/program/COptions.h"

#include <QFile>
#include <QRegularExpression>
#include <QString>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

/// Every option with its argument that p_objPattern finds, such as "host ADDRESS" or "serial".
std::set<std::string> Options(const QString& p_strText, const QRegularExpression& p_objPattern) {
    std::set<std::string> strOptions;
    for (auto objMatches = p_objPattern.globalMatch(p_strText); objMatches.hasNext();) {
        const QRegularExpressionMatch objMatch = objMatches.next();
        const QString strOption = objMatch.captured(1) + " " + objMatch.captured(2);
        strOptions.insert(strOption.trimmed().toStdString());
    }
    return strOptions;
}

TEST(SimulatorManPageTest, ExplainsTheOptionsThatTheHelpLists) {
    QFile objFile(VARDEN_SIMULATOR_MAN_PAGE);
    ASSERT_TRUE(objFile.open(QFile::ReadOnly));
    const auto iLines = QRegularExpression::MultilineOption;
    const auto strHelp =
        Options(COptions::HelpText(),
                QRegularExpression("^  (?:-\\w, )?--([a-z-]+)(?: <(\\w+)>)?", iLines));
    auto strPage =
        Options(objFile.readAll(),
                QRegularExpression("^(?:\\*-\\w\\*, )?\\*--([a-z-]+)\\*(?: _(\\w+)_)?$", iLines));
    // The help says of this one's argument in its first line that it is a program.
    EXPECT_EQ(strPage.erase("usb PROGRAM"), 1U);
    strPage.insert("usb");
    EXPECT_EQ(strPage, strHelp);
    EXPECT_TRUE(COptions::HelpText().contains("[--usb PROGRAM [ARGUMENT...]]"));
}

}  // namespace
