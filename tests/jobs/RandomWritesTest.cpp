#include "jobs/CWriteJob.h"
#include "model/MSettingText.h"
#include "protocol/MAnswer.h"
#include "simulator/MItemNames.h"
#include "tests/jobs/CModelPrinter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>

// Changes of settings by chance, with faults by chance, against a printer that remembers what it
// really holds. VARDEN_RANDOM_WRITES=COUNT[,SEED] runs more of them, or the same again.

namespace {

using End = CWriteReport::End;
using Mishap = CModelPrinter::Mishap;
using MSettings::Cuts;
using MSettings::Row;
using Result = CWriteReport::Result;

constexpr int Usual = 250;
constexpr int Many = 1000;

/// One case, all of it from its own number.
class Case {
public:
    explicit Case(std::uint32_t p_iSeed)
        : m_objRandom(p_iSeed)
        , m_iLink(static_cast<Cuts>(Number(0, 2)))
        , m_objModel(m_iLink) {}

    void Run() {
        Shuffle();
        Ask();
        Break();
        CWriteJob objJob(m_objModel, m_objJournal, m_objStages);
        m_objReport = objJob.Run(m_objRequest);
        m_objModel.Settled();
    }

    void Check() const {
        EXPECT_EQ(m_objJournal.m_objPlan.has_value(), m_objReport.m_iEnd == End::PersonNeeded);
        const bool bBegun = m_objReport.m_iEnd == End::Changed ||
                            m_objReport.m_iEnd == End::Undone ||
                            m_objReport.m_iEnd == End::PersonNeeded;
        EXPECT_TRUE(bBegun || m_objModel.Sets().empty());
        if (m_objModel.Sets().empty() && m_objModel.m_objPrinter.Faults().m_bForgets) {
            return;  // what it has forgotten by itself is nobody's doing
        }
        switch (m_objReport.m_iEnd) {
        case End::Unchanged:
        case End::Changed:
            ExpectHeld(true);
            break;
        case End::WouldChange:
        case End::NotBegun:
        case End::Undone:
            ExpectHeld(false);
            break;
        case End::PersonNeeded:
            break;
        }
        CheckResults();
    }

    /// What was left open is undone once the printer has got over it.
    void CheckRecovery() {
        if (!m_objJournal.m_objPlan) {
            return;
        }
        m_objModel.m_iMishaps.clear();
        m_objModel.m_objPrinter.SetFaults({});
        CWriteJob objJob(m_objModel, m_objJournal, m_objStages);
        const CWritePlan objPlan = *m_objJournal.m_objPlan;
        const CWriteReport objReport = objJob.Restore(objPlan, 60);
        if (objReport.m_iEnd == End::Undone) {
            ExpectHeld(false);
            EXPECT_FALSE(m_objJournal.m_objPlan);
        } else {
            EXPECT_EQ(objReport.m_iEnd, End::PersonNeeded);
            EXPECT_FALSE(objReport.m_objDoubtful.empty() && IsReachable(objPlan) &&
                         objReport.m_iWhy != CWriteReport::Why::OthersChanged);
        }
    }

    [[nodiscard]] End Ended() const { return m_objReport.m_iEnd; }

private:
    int Number(int p_iFrom, int p_iTo) {
        return std::uniform_int_distribution<int>(p_iFrom, p_iTo)(m_objRandom);
    }
    bool Chance(int p_iPercent) { return Number(1, 100) <= p_iPercent; }

    std::string Value(const Row& p_objRow) {
        switch (p_objRow.m_iKind) {
        case MSettings::Kind::List:
            return std::string(p_objRow.m_strEntries[static_cast<std::size_t>(
                Number(0, static_cast<int>(p_objRow.m_strEntries.size()) - 1))]);
        case MSettings::Kind::Address: {
            std::string strAddress = "10";
            for (int i = 0; i < 3; ++i) {
                strAddress += "." + std::to_string(Number(0, 255));
            }
            return strAddress;
        }
        case MSettings::Kind::Text:
            return p_objRow.m_strName == "dhcp-client-id"
                       ? std::string(32, static_cast<char>(Number('A', 'Z')))
                       : "shop " + std::to_string(Number(1, 9));
        case MSettings::Kind::Number:
            break;
        }
        const MSettings::Range& objRange = p_objRow.m_objRange;
        const int iValue = Number(objRange.m_iMin, objRange.m_iMax);
        CItemManager objItems;
        if (p_objRow.m_objDirection != nullptr) {
            (objItems.*p_objRow.m_objDirection)->m_vValue = std::string(iValue < 0 ? "-" : "+");
        }
        (objItems.*p_objRow.m_objSlots.front())->m_vValue = std::abs(iValue);
        return MSettingText::Show(p_objRow, objItems).value();
    }

    /// Other settings than the defaults.
    void Shuffle() {
        for (const Row& objRow : MSettings::All()) {
            const bool bSends = MSettingRoute::CarriedBy(objRow) != MSettingRoute::Command::None;
            if (bSends && objRow.m_strName != "socket" && Chance(40)) {
                MSettingText::Set(objRow, m_objModel.m_objPrinter.Items(), Value(objRow));
            }
        }
        m_objModel.m_bMoves = Chance(50);
        m_objModel.Settle();
        m_objBefore = CSnapshot(Copy());
    }

    [[nodiscard]] CItemManager Copy() const {
        CItemManager objCopy;
        for (const CItemManager::Row& objRow : CItemManager::Rows()) {
            (objCopy.*objRow.m_objSlot)->m_vValue =
                (m_objModel.m_objPrinter.Items().*objRow.m_objSlot)->m_vValue;
        }
        return objCopy;
    }

    void Ask() {
        const int iPercent = Chance(50) ? 5 : 40;
        for (const Row& objRow : MSettings::All()) {
            if (MSettingRoute::CarriedBy(objRow) != MSettingRoute::Command::None &&
                Chance(iPercent)) {
                MSettingText::Set(objRow, m_objRequest.m_objWanted.Items(),
                                  Chance(30)
                                      ? MSettingText::Show(objRow, m_objBefore.Items()).value()
                                      : Value(objRow));
                m_objRequest.m_objWanted.SetKnown(objRow);
            }
        }
        const Row& objStop = MSettings::Get("stop-bit");
        if (Chance(70)) {
            MSettingText::Set(objStop, m_objRequest.m_objVouched.Items(),
                              *MSettingText::Show(objStop, m_objBefore.Items()));
            m_objRequest.m_objVouched.SetKnown(objStop);
        }
        m_objRequest.m_iLink = m_iLink;
        m_objRequest.m_bAllowLinkChange = Chance(80);
        m_objRequest.m_bCheckOnly = Chance(5);
        m_objRequest.m_dReach = Chance(80) ? 20 : 3;
    }

    void Break() {
        const int iMishaps = Chance(30) ? 0 : Number(1, 4);
        for (int i = 0; i < iMishaps; ++i) {
            m_objModel.m_iMishaps[Number(0, 20)] = static_cast<Mishap>(Number(1, 7));
        }
        CStateFaults objFaults;
        const std::vector<std::string> strHeads{"{Z2;1,", "{Z2;2,", "{IP;2", "{IP;3",
                                                "{IP;4",  "{IS;",   "{IH;",  "{Z5;3"};
        if (Chance(15)) {
            objFaults.m_strRefused.push_back(strHeads[static_cast<std::size_t>(
                Number(0, static_cast<int>(strHeads.size()) - 1))]);
            objFaults.m_iRefusedOnly = static_cast<std::size_t>(Number(0, 2));
        }
        if (Chance(15)) {
            const auto objRows = CItemManager::Rows();
            objFaults.m_strStuck.emplace_back(MItemNames::Of(objRows[static_cast<std::size_t>(
                Number(0, static_cast<int>(objRows.size()) - 1))]));
        }
        if (Chance(10)) {
            objFaults.m_iFieldsKept = static_cast<std::size_t>(Number(0, 20));
        } else if (Chance(10)) {
            objFaults.m_iBytesKept = static_cast<std::size_t>(Number(0, 30));
        }
        objFaults.m_bForgets = Chance(10);
        m_objModel.m_dPowerBack = Chance(70) ? 5 : 1000;
        m_objModel.m_objPrinter.SetFaults(objFaults);
    }

    /// Held against what was wanted, or against what was before: every setting of the printer, for
    /// the one that no answer reports only what was vouched for or wanted.
    void ExpectHeld(bool p_bWanted) const {
        for (const Row& objRow : MSettings::All()) {
            const bool bReported = MSettingRoute::ReportedIn(objRow) != MAnswer::NoGroup;
            if (p_bWanted && !bReported) {
                continue;
            }
            const bool bWanted = p_bWanted && m_objRequest.m_objWanted.IsKnown(objRow);
            const CItemManager& objExpected =
                bWanted ? m_objRequest.m_objWanted.Items() : m_objBefore.Items();
            const bool bHeld =
                MSettingText::Same(objRow, objExpected, m_objModel.m_objPrinter.Items());
            EXPECT_TRUE(bHeld && (bWanted || HasFields(objRow, objExpected)))
                << objRow.m_strName << " is "
                << MSettingText::Show(objRow, m_objModel.m_objPrinter.Items()).value_or("?")
                << ", expected " << MSettingText::Show(objRow, objExpected).value_or("?")
                << ", end " << static_cast<int>(m_objReport.m_iEnd);
        }
    }

    /// The very same fields, but for what fills a text up.
    [[nodiscard]] bool HasFields(const Row& p_objRow, const CItemManager& p_objExpected) const {
        return p_objRow.m_iKind == MSettings::Kind::Text ||
               std::ranges::all_of(p_objRow.Items(), [&](MSettings::Slot p_objSlot) {
                   return (p_objExpected.*p_objSlot)->GetValueString() ==
                          (m_objModel.m_objPrinter.Items().*p_objSlot)->GetValueString();
               });
    }

    void CheckResults() const {
        for (const auto& [strName, iResult] : m_objReport.m_objResults) {
            const Row& objRow = MSettings::Get(strName);
            const CItemManager& objHeld = m_objModel.m_objPrinter.Items();
            const bool bAsBefore = MSettingText::Same(objRow, m_objBefore.Items(), objHeld);
            switch (iResult) {
            case Result::Changed:
                EXPECT_TRUE(MSettingText::Same(objRow, m_objRequest.m_objWanted.Items(), objHeld))
                    << strName;
                break;
            case Result::Same:
            case Result::Refused:
            case Result::Restored:
                EXPECT_TRUE(bAsBefore) << strName << static_cast<int>(iResult);
                break;
            default:
                break;
            }
            EXPECT_EQ(iResult == Result::Unverifiable, strName == "stop-bit");
        }
    }

    /// A printer that is nowhere, or lost for good, cannot be brought back.
    bool IsReachable(const CWritePlan& p_objPlan) {
        const std::vector<CPrinterPlace> objPlaces = p_objPlan.Places(p_objPlan.m_objSteps.size());
        return std::ranges::any_of(objPlaces, [&](const CPrinterPlace& p_objPlace) {
            return m_objModel.IsTaken(p_objPlace);
        });
    }

    std::mt19937 m_objRandom;
    Cuts m_iLink;
    CModelPrinter m_objModel;
    CModelJournal m_objJournal;
    CStages m_objStages;
    CWriteRequest m_objRequest;
    CWriteReport m_objReport;
    CSnapshot m_objBefore;
};

TEST(RandomWrites, AreWholeOrUndoneOrCallAPerson) {
    int iCount = Usual;
    std::uint32_t iSeed = std::random_device()();
    if (const char* const strAsked = std::getenv("VARDEN_RANDOM_WRITES")) {
        char* strEnd = nullptr;
        iCount = static_cast<int>(std::strtol(strAsked, &strEnd, 10));
        iSeed = *strEnd == ',' ? static_cast<std::uint32_t>(std::strtoul(strEnd + 1, nullptr, 10))
                               : iSeed;
    }
    std::cout << iCount << " cases, the first with seed " << iSeed << "\n";
    std::map<End, int> iEnds;
    for (int i = 0; i < iCount && !::testing::Test::HasFailure(); ++i) {
        const std::uint32_t iOwn = iSeed + static_cast<std::uint32_t>(i);
        SCOPED_TRACE("VARDEN_RANDOM_WRITES=1," + std::to_string(iOwn));
        Case objCase(iOwn);
        objCase.Run();
        objCase.Check();
        ++iEnds[objCase.Ended()];
        objCase.CheckRecovery();
    }
    for (const auto& [iEnd, iCases] : iEnds) {
        std::cout << "end " << static_cast<int>(iEnd) << ": " << iCases << "\n";
    }
    EXPECT_TRUE(iCount < Many || iEnds.size() == 6) << "not every end has come up";
}

}  // namespace
