#include "jobs/CWriteRun.h"
#include "jobs/CWriteJob.h"
#include "model/MSettingText.h"
#include "tests/jobs/CModelPrinter.h"

#include <gtest/gtest.h>

namespace {

using Command = CWritePlan::Command;

/// Ways on which there is no printer, and a clock that only waiting moves.
class CNoPrinter : public IPrinterWays {
public:
    int m_iSought = 0;
    double m_dWaited = 0;

    std::unique_ptr<IPrinter> At(const CPrinterPlace& /*p_objPlace*/) override {
        ++m_iSought;
        return nullptr;
    }
    bool IsTaken(const CPrinterPlace& /*p_objPlace*/) override { return false; }
    [[nodiscard]] double Now() const override { return 500 + m_dWaited; }
    void Wait(double p_dSeconds) override { m_dWaited += p_dSeconds; }
};

class CWriteRunTest : public ::testing::Test {
protected:
    CWriteRunTest() {
        m_objPlan.m_objSteps.push_back({Command::Adjustments});
        m_objPlan.m_objSteps.push_back({Command::IpAddress, true, {"10.1.2.3", {}, ""}});
    }

    CNoPrinter m_objWays;
    CStages m_objStages;
    CWritePlan m_objPlan;
};

TEST_F(CWriteRunTest, APrinterThatIsNowhereIsSoughtForItsTimeAndNoLonger) {
    CWriteRun objRun(m_objPlan, m_objWays, m_objStages, 2);
    objRun.Look();
    EXPECT_EQ(m_objWays.m_iSought, 3);
    EXPECT_EQ(m_objWays.m_dWaited, 2);
    EXPECT_FALSE(objRun.IsRead());
    EXPECT_EQ(objRun.Last().m_objFailure.m_iKind, CFailure::Kind::UsbNotOpened);
}

TEST_F(CWriteRunTest, WhatWasSentBeforeIsSoughtAtEachPlace) {
    CWriteRun objRun(m_objPlan, m_objWays, m_objStages, 0);
    EXPECT_FALSE(objRun.HasSent());
    objRun.AssumeSent();
    EXPECT_TRUE(objRun.HasSent());
    EXPECT_TRUE(objRun.HasSent(Command::Adjustments));
    EXPECT_TRUE(objRun.HasSent(Command::IpAddress));
    EXPECT_FALSE(objRun.HasSent(Command::Dhcp));
    EXPECT_TRUE(objRun.Place().IsTargets()) << "most of it was not begun";
    objRun.Look();
    EXPECT_EQ(m_objWays.m_iSought, 2);
    EXPECT_EQ(m_objWays.m_dWaited, 0);
}

TEST_F(CWriteRunTest, ACommandIsTriedForItsTimeAndNoLonger) {
    CWriteRun objRun(m_objPlan, m_objWays, m_objStages, 2);
    CWriteReport objReport;
    EXPECT_FALSE(objRun.Send(objReport));
    EXPECT_EQ(m_objWays.m_iSought, 3);
    EXPECT_EQ(m_objWays.m_dWaited, 2);
    EXPECT_EQ(objReport.m_iWhy, CWriteReport::Why::NotAnswered);
    EXPECT_EQ(objReport.m_objStatus.m_objFailure.m_iKind, CFailure::Kind::UsbNotOpened);
    EXPECT_FALSE(objRun.HasSent());
    EXPECT_FALSE(objRun.HasSent(Command::Adjustments));
    EXPECT_EQ(m_objStages.m_strStages, std::vector<std::string>{"writing 1/2"});
}

TEST_F(CWriteRunTest, WithoutAPrinterNothingIsRestored) {
    CWriteRun objRun(m_objPlan, m_objWays, m_objStages, 0);
    objRun.AssumeSent();
    EXPECT_FALSE(objRun.Restore());
    EXPECT_FALSE(objRun.ReadBack());
    EXPECT_EQ(m_objStages.m_strStages, std::vector<std::string>{"restoring 0/0"});
}

/// One that is nowhere any more from some opening of its link on.
class CLeavingPrinter : public CModelPrinter {
public:
    explicit CLeavingPrinter(int p_iOpenings)
        : CModelPrinter(MSettings::Cuts::Nothing)
        , m_iOpenings(p_iOpenings) {}

    std::unique_ptr<IPrinter> At(const CPrinterPlace& p_objPlace) override {
        return m_iOpenings-- > 0 ? CModelPrinter::At(p_objPlace) : nullptr;
    }

private:
    int m_iOpenings;
};

TEST_F(CWriteRunTest, AJobWithoutAPrinterHasNotBegun) {
    CWriteRequest objRequest;
    MSettingText::Set(MSettings::Get("feed-adj"), objRequest.m_objWanted.Items(), "1");
    objRequest.m_objWanted.SetKnown(MSettings::Get("feed-adj"));
    for (const int iOpenings : {0, 1, 2}) {
        CLeavingPrinter objPrinter(iOpenings);
        CModelJournal objJournal;
        CWriteJob objJob(objPrinter, objJournal, m_objStages);
        const CWriteReport objReport = objJob.Run(objRequest);
        EXPECT_EQ(objReport.m_iEnd, CWriteReport::End::NotBegun) << iOpenings;
        EXPECT_EQ(objReport.m_iWhy,
                  iOpenings < 2 ? CWriteReport::Why::NotRead : CWriteReport::Why::NotReady);
        EXPECT_EQ(objReport.m_bSent, iOpenings > 0);
        EXPECT_EQ(objReport.m_objRead.m_objFailure.m_iKind,
                  iOpenings < 2 ? CFailure::Kind::UsbNotOpened : CFailure::Kind::None);
        EXPECT_EQ(objReport.m_objStatus.m_objFailure.m_iKind,
                  iOpenings < 2 ? CFailure::Kind::None : CFailure::Kind::UsbNotOpened);
        EXPECT_EQ(objJournal.m_iOpened, 0);
    }
}

}  // namespace
