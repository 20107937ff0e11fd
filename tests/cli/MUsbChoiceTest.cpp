#include "cli/MUsbChoice.h"

#include "cli/CCommandError.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

CUsbPrinterEntry Entry(int p_iBus, const std::vector<int>& p_iPorts,
                       const std::string& p_strSerialNumber = {}) {
    CUsbPrinterEntry objEntry;
    objEntry.m_iBus = p_iBus;
    objEntry.m_iPorts = p_iPorts;
    objEntry.m_strSerialNumber = p_strSerialNumber;
    objEntry.m_strManufacturer = "Varden";
    objEntry.m_strProduct = "Label Printer";
    return objEntry;
}

class MUsbChoiceTest : public ::testing::Test {
protected:
    std::string Chosen(const std::string& p_strTarget) {
        return MUsbChoice::TargetOf(MUsbChoice::Choose(
            CTarget::Parse(p_strTarget), m_objEntries, [this](const CUsbPrinterEntry& p_objEntry) {
                m_strAsked.push_back(MUsbChoice::TargetOf(p_objEntry));
                return m_strAsked.back() == m_strForeign || m_bAllForeign;
            }));
    }

    /// The words with which a target is refused.
    CCommandError::Texts Refused(const std::string& p_strTarget) {
        try {
            ADD_FAILURE() << Chosen(p_strTarget);
        } catch (const CCommandError& objError) {
            EXPECT_EQ(objError.Code(), MExitCode::NotReachable);
            EXPECT_EQ(objError.Words().m_strTarget, p_strTarget);
            return objError.Words();
        }
        return {};
    }

    std::vector<CUsbPrinterEntry> m_objEntries{Entry(1, {2}, "A17"), Entry(1, {4, 3}, "B4"),
                                               Entry(2, {2})};
    std::string m_strForeign;
    bool m_bAllForeign = false;
    Names m_strAsked;
};

TEST_F(MUsbChoiceTest, TheOnlyOneIsMeantAndNotAsked) {
    m_objEntries = {Entry(3, {1, 2, 3})};
    EXPECT_EQ(Chosen("usb"), "usb:3-1.2.3");
    EXPECT_EQ(m_strAsked, Names{});
}

TEST_F(MUsbChoiceTest, APortMeansTheOneThere) {
    EXPECT_EQ(Chosen("usb:1-2"), "usb:1-2");
    EXPECT_EQ(Chosen("usb:1-4.3"), "usb:1-4.3");
    EXPECT_EQ(Chosen("usb:2-2"), "usb:2-2");
    EXPECT_EQ(m_strAsked, Names{});
}

TEST_F(MUsbChoiceTest, ASerialNumberMeansTheOneThatHasIt) {
    EXPECT_EQ(Chosen("usb:B4"), "usb:1-4.3");
    EXPECT_EQ(m_strAsked, Names{});
}

TEST_F(MUsbChoiceTest, WithNothingPluggedInThereIsNone) {
    m_objEntries.clear();
    EXPECT_EQ(Refused("usb").m_strWhat, "There is no printer on USB");
    EXPECT_EQ(Refused("usb:1-2").m_strWhat, "There is no printer on USB");
}

TEST_F(MUsbChoiceTest, OneThatIsNotThereIsToldWithThoseThatAre) {
    for (const char* const strTarget : {"usb:1-3", "usb:1-4", "usb:1-4.3.1", "usb:a17"}) {
        const CCommandError::Texts objTexts = Refused(strTarget);
        EXPECT_EQ(objTexts.m_strWhat, std::string("There is no printer ") + strTarget);
        EXPECT_EQ(objTexts.m_strCause,
                  "what is plugged in is usb:1-2 (Varden Label Printer, serial number A17), "
                  "usb:1-4.3 (Varden Label Printer, serial number B4), usb:2-2 (Varden Label "
                  "Printer)");
    }
}

TEST_F(MUsbChoiceTest, SeveralAreListed) {
    m_strForeign = "usb:1-4.3";
    const CCommandError::Texts objTexts = Refused("usb");
    EXPECT_EQ(objTexts.m_strWhat, "Several printers are plugged in on USB");
    EXPECT_EQ(objTexts.m_strCause, "usb:1-2 (Varden Label Printer, serial number A17), usb:2-2 "
                                   "(Varden Label Printer)");
    EXPECT_EQ(objTexts.m_strHint, "name the one that is meant, as in usb:1-2");
    EXPECT_EQ(m_strAsked, (Names{"usb:1-2", "usb:1-4.3", "usb:2-2"}));
}

TEST_F(MUsbChoiceTest, PrintersOfOtherMakersAreNotMeant) {
    m_objEntries.pop_back();
    m_strForeign = "usb:1-2";
    EXPECT_EQ(Chosen("usb"), "usb:1-4.3");
    m_bAllForeign = true;
    EXPECT_EQ(Refused("usb").m_strWhat, "None of the printers on USB is one of Varden");
}

TEST_F(MUsbChoiceTest, TwoWithTheSameSerialNumberAreListed) {
    m_objEntries[2].m_strSerialNumber = "A17";
    EXPECT_EQ(Refused("usb:A17").m_strCause,
              "usb:1-2 (Varden Label Printer, serial number A17), usb:2-2 (Varden Label Printer, "
              "serial number A17)");
}

TEST_F(MUsbChoiceTest, WhatTheSystemDoesNotKnowIsLeftOut) {
    CUsbPrinterEntry objSilent;
    objSilent.m_iBus = 4;
    m_objEntries = {objSilent, Entry(1, {2})};
    EXPECT_EQ(Refused("usb").m_strCause, "usb, usb:1-2 (Varden Label Printer)");
}

}  // namespace
