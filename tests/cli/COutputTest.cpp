#include "cli/COutput.h"

#include "tests/cli/CCliFixture.h"

namespace {

class COutputTest : public ::testing::Test {
protected:
    std::ostringstream m_objOut;
    std::ostringstream m_objError;
    CFakeInterrupt m_objInterrupt;
    COutput m_objOutput{m_objOut, m_objError, m_objInterrupt};
    CTable m_objTable{{"HEAD"}};
    const CCommandError m_objFailure{MExitCode::Wrong, {"What", "cause", "target", "hint"}};
};

TEST_F(COutputTest, PeopleReadOnStandardOutput) {
    m_objOutput.Say("text");
    m_objOutput.Print("script\n");
    m_objOutput.Show(m_objTable);
    m_objOutput.Json()["a"] = 1;
    EXPECT_TRUE(m_objOutput.Finish());
    EXPECT_EQ(m_objOut.str(), "text\nscript\nHEAD\n");
    EXPECT_EQ(m_objError.str(), "");
}

TEST_F(COutputTest, WithJsonTheyReadOnStandardErrorAndTablesAreLeftOut) {
    m_objOutput.ChooseJson();
    m_objOutput.Say("text");
    m_objOutput.Show(m_objTable);
    m_objOutput.Json()["a"] = 1;
    EXPECT_TRUE(m_objOutput.Finish());
    EXPECT_EQ(m_objOut.str(), "{\n  \"a\": 1\n}\n");
    EXPECT_EQ(m_objError.str(), "text\n");
}

TEST_F(COutputTest, AFailureIsALineOnStandardError) {
    m_objOutput.Fail(m_objFailure);
    m_objOutput.Finish();
    EXPECT_EQ(m_objOut.str(), "");
    EXPECT_EQ(m_objError.str(), "varden: What: cause: hint\n");
}

TEST_F(COutputTest, AFailureIsTheObjectsError) {
    m_objOutput.ChooseJson();
    m_objOutput.Fail(m_objFailure);
    m_objOutput.Finish();
    EXPECT_EQ(
        nlohmann::json::parse(m_objOut.str()),
        nlohmann::json::parse(
            R"({"error": {"what": "What", "cause": "cause", "target": "target", "hint": "hint"}})"));
}

TEST_F(COutputTest, WhatIsNotKnownOfAFailureIsNull) {
    m_objOutput.ChooseJson();
    m_objOutput.Fail({MExitCode::Failed, {"What", {}, {}, {}}});
    m_objOutput.Finish();
    EXPECT_EQ(nlohmann::json::parse(m_objOut.str()),
              nlohmann::json::parse(
                  R"({"error": {"what": "What", "cause": null, "target": null, "hint": null}})"));
    EXPECT_EQ(m_objError.str(), "varden: What\n");
}

TEST_F(COutputTest, WhatIsNoUtf8IsPrintedAllTheSame) {
    m_objOutput.ChooseJson();
    m_objOutput.Json()["file"] = "M\xFCller";
    EXPECT_TRUE(m_objOutput.Finish());
    EXPECT_EQ(nlohmann::json::parse(m_objOut.str())["file"], "M\uFFFDller");
}

TEST_F(COutputTest, StandardOutputThatTakesNothingIsTold) {
    m_objOut.setstate(std::ios::badbit);
    EXPECT_FALSE(m_objOutput.Finish());
}

TEST_F(COutputTest, CtrlCHasAnObjectToPrintUntilTheOneIsPrinted) {
    EXPECT_EQ(m_objInterrupt.m_strWords, "");
    m_objOutput.ChooseJson();
    EXPECT_EQ(nlohmann::json::parse(m_objInterrupt.m_strWords)["error"]["what"], "Interrupted");
    EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(m_objInterrupt.m_strWords), "");
    m_objOutput.Finish();
    EXPECT_EQ(m_objInterrupt.m_strWords, "");
}

TEST_F(COutputTest, WithoutJsonCtrlCPrintsNothing) {
    m_objOutput.Say("text");
    m_objOutput.Finish();
    EXPECT_EQ(m_objInterrupt.m_strWords, "");
}

TEST_F(COutputTest, ProgressIsForTerminals) {
    m_objOutput.ShowProgress("reading");
    m_objOutput.Finish();
    EXPECT_EQ(m_objError.str(), "");
}

TEST_F(COutputTest, ProgressIsOneLineThatGoesBeforeAnythingElseIsTold) {
    COutput objOutput(m_objOut, m_objError, m_objInterrupt, 0, 12);
    const auto Told = [this] {
        const std::string strText = m_objError.str();
        m_objError.str("");
        return strText;
    };
    objOutput.ShowProgress("first");
    EXPECT_EQ(Told(), "first");
    EXPECT_EQ(m_objInterrupt.m_strNote, "\n");
    objOutput.ShowProgress("second\x1B");
    EXPECT_EQ(Told(), "\r     \rsecond<1B>");
    objOutput.Show(m_objTable);
    EXPECT_EQ(Told(), "\r          \r");
    EXPECT_EQ(m_objInterrupt.m_strNote, "");
    objOutput.Say("text");
    EXPECT_EQ(Told(), "");
    objOutput.ShowProgress("longer than the terminal");
    EXPECT_EQ(Told(), "longer than");
    objOutput.Note("note");
    EXPECT_EQ(Told(), "\r           \rvarden: note\n");
    objOutput.ShowProgress("end");
    objOutput.Say("text");
    EXPECT_EQ(Told(), "end\r   \r");
    objOutput.ShowProgress("end");
    objOutput.Finish();
    EXPECT_EQ(Told(), "end\r   \r");
    EXPECT_EQ(m_objOut.str(), "HEAD\ntext\ntext\n");
}

}  // namespace
