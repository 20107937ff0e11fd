#include "model/MSettingText.h"
#include "tests/jobs/CWriteTranscript.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

// Changes of settings, one a row: what is asked for and what goes wrong, and all that comes of it.
// The words are CWriteTranscript's.

namespace {

using Mishap = CModelPrinter::Mishap;
using MSettings::Cuts;

struct Scenario {
    const char* m_strName;
    Cuts m_iLink;
    std::function<std::string(CWriteTranscript&)> m_fnDo;
};

void PrintTo(const Scenario& p_objScenario, std::ostream* p_objStream) {
    *p_objStream << p_objScenario.m_strName;
}

/// So many calls from one on meet the same.
void From(CWriteTranscript& p_objWrite, int p_iFirst, Mishap p_iMishap, int p_iCount = 200) {
    for (int i = 0; i < p_iCount; ++i) {
        p_objWrite.m_objModel.m_iMishaps[p_iFirst + i] = p_iMishap;
    }
}

/// From one call on, and up to another, what it tells of cut-adj is no value.
void Garble(CWriteTranscript& p_objWrite, int p_iFirst, int p_iEnd) {
    CModelPrinter& objModel = p_objWrite.m_objModel;
    objModel.m_fnBeforeCall = [&objModel, p_iFirst, p_iEnd] {
        const bool bGarbled = objModel.m_iCalls >= p_iFirst && objModel.m_iCalls < p_iEnd;
        objModel.m_objPrinter.Items().m_objCutPosDirection->SetValue(bGarbled ? "x" : "+");
    };
}

// clang-format off
const std::vector<Scenario> Scenarios{
    {"Changed", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "-1.5"}}); return w.Run(); }},
    {"ChangedInTwoCommands", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "-1.5"}, {"feed-key", "PRINT"}, {"stop-bit", "1bit"}}); return w.Run(); }},
    {"Unchanged", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "0"}, {"stop-bit", "2bits"}}); return w.Run(); }},
    {"CheckOnly", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objRequest.m_bCheckOnly = true; return w.Run(); }},
    {"NotGiven", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}}); return w.Run(); }},
    {"Vouched", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}}); w.Vouch({{"stop-bit", "1bit"}}); return w.Run(); }},
    {"VouchedOtherwise", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"stop-bit", "2bits"}}); w.Vouch({{"stop-bit", "1bit"}}); return w.Run(); }},
    {"VouchedTheSame", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"stop-bit", "2bits"}}); w.Vouch({{"stop-bit", "2bits"}}); return w.Run(); }},
    {"OtherStopBitUnanswered", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}, {"stop-bit", "2bits"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; return w.Run(); }},
    {"OtherStopBitVouchedUnanswered", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}, {"stop-bit", "2bits"}}); w.Vouch({{"stop-bit", "1bit"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; return w.Run(); }},
    {"SameStopBitVouchedUnanswered", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}, {"stop-bit", "1bit"}}); w.Vouch({{"stop-bit", "1bit"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; return w.Run(); }},
    {"OtherStopBitRefused", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}, {"stop-bit", "2bits"}}); w.Refuse("{Z2;1,"); return w.Run(); }},
    {"OtherStopBitNotSentYet", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}, {"stop-bit", "2bits"}, {"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unreached; From(w, 3, Mishap::Unreached, 60); return w.Run(); }},
    {"Refused", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.Refuse("{Z2;2,"); return w.Run(); }},
    {"RefusedBehindAnother", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}, {"cut-adj", "0"}, {"font-code", "PC-852"}}); w.Vouch({{"stop-bit", "1bit"}}); w.Refuse("{Z2;2,"); return w.Run(); }},
    {"Troubled", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Troubled; return w.Run(); }},
    {"Unanswered", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; return w.Run(); }},
    {"NothingGoesOut", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 3, Mishap::Unreached); return w.Run(); }},
    {"GoesOutAtTheThirdTry", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 3, Mishap::Unreached, 2); return w.Run(); }},
    {"ReadBackAtTheThirdTry", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unheard, 2); return w.Run(); }},
    {"NotReadBack", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unheard); return w.Run(); }},
    {"Late", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Late; return w.Run(); }},
    {"Stuck", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}, {"cut-adj", "1"}}); w.Stick("FeedAdjustment"); return w.Run(); }},
    {"StuckForGood", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}, {"cut-adj", "1"}}); w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls == 5) { w.Stick("CutPosAdjustment"); w.Stick("FeedAdjustment"); } }; w.m_objModel.m_iMishaps[4] = Mishap::None; w.Refuse("{Z2;2,", 2); w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; return w.Run(); }},
    {"OthersChanged", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls == 4) { w.Change({{"country", "7"}, {"dhcp", "ON"}}); } }; return w.Run(); }},
    {"OthersChangedAndWanted", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}, {"dhcp", "OFF"}}); w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls == 4) { w.Change({{"dhcp", "ON"}}); } }; return w.Run(); }},
    {"OthersChangedBeforeTheUndoing", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Troubled; w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls == 4) { w.Change({{"country", "7"}}); } }; return w.Run(); }},
    {"SensorsMayChange", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_fnBeforeCall = [&w] { w.m_objModel.m_objPrinter.Items().m_objAmbientSensor->SetValue(w.m_objModel.m_iCalls); }; return w.Run(); }},
    {"NotRead", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[0] = Mishap::Unreached; return w.Run(); }},
    {"NotReadASecondTime", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[1] = Mishap::Unreached; return w.Run(); }},
    {"NotHeardASecondTime", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[1] = Mishap::Unheard; return w.Run(); }},
    {"Unsteady", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "3"}}); w.m_objModel.m_fnBeforeCall = [&w] { w.Change({{"feed-adj", w.m_objModel.m_iCalls % 2 == 0 ? "1" : "2"}}); }; return w.Run(); }},
    {"SteadyAtTheThirdReading", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "3"}}); w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls == 1) { w.Change({{"feed-adj", "2"}}); } }; return w.Run(); }},
    {"Unreadable", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_objPrinter.Items().m_objCutPosDirection->SetValue(std::string("x")); return w.Run(); }},
    {"NotOneCommandBefore", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"dhcp", "ON"}}); w.m_objModel.m_objPrinter.Items().m_objDhcpClientHost->SetValue(std::string("a|}b")); return w.Run(); }},
    {"NotOneCommandAfter", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"dhcp-host-name", "x"}}); w.m_objRequest.m_objWanted.Items().m_objDhcpClientHost->SetValue(std::string("{x")); return w.Run(); }},
    {"TooLongAfter", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"dhcp-host-name", "x"}}); w.m_objRequest.m_objWanted.Items().m_objDhcpClientHost->SetValue(std::string(17, 'x')); return w.Run(); }},
    {"TooWideAfter", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objRequest.m_objWanted.Items().m_objFeedAdjustment->SetValue(1234); return w.Run(); }},
    {"AsExpected", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.Expect({{"feed-adj", "0"}, {"country", "0"}, {"stop-bit", "2bits"}, {"ambient-sensor", "0"}}); return w.Run(); }},
    {"NotAsExpected", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.Expect({{"feed-adj", "1"}, {"country", "0"}, {"dhcp", "ON"}}); return w.Run(); }},
    {"NotAsExpectedButWanted", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "0"}}); w.Expect({{"country", "7"}}); return w.Run(); }},
    {"UnreadableExpected", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.Expect({{"cut-adj", "0"}}); w.m_objModel.m_objPrinter.Items().m_objCutPosDirection->SetValue(std::string("x")); return w.Run(); }},
    {"TheHost", Cuts::Nothing, [](CWriteTranscript& w) { w.Hold({{"dhcp-host-name", "shop 1"}}); w.Want({{"feed-adj", "0"}}); w.m_objRequest.m_strExpectedHost = "shop 1"; return w.Run(); }},
    {"AnotherHost", Cuts::Nothing, [](CWriteTranscript& w) { w.Hold({{"dhcp-host-name", "shop 1"}}); w.Want({{"feed-adj", "0"}}); w.m_objRequest.m_strExpectedHost = "shop 2"; return w.Run(); }},
    {"AnotherHostNotAsExpected", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "0"}}); w.Expect({{"country", "7"}}); w.m_objRequest.m_strExpectedHost = "shop 2"; return w.Run(); }},
    {"NotReady", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_objPrinter.SetStatus("15"); return w.Run(); }},
    {"NoStatus", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[2] = Mishap::Unanswered; return w.Run(); }},
    {"NoJournal", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objJournal.m_bWrites = false; return w.Run(); }},
    {"JournalStays", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objJournal.m_bCloses = false; return w.Run(); }},
    {"LinkChange", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}, {"feed-adj", "1"}}); return w.Run(); }},
    {"NoLinkChangeOnUsb", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}, {"speed", "2400bps"}, {"stop-bit", "1bit"}}); return w.Run(); }},
    {"NoLinkChangeOfTheOtherLink", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"speed", "2400bps"}, {"stop-bit", "1bit"}}); return w.Run(); }},
    {"StopBitIsALinkChange", Cuts::Serial, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}, {"stop-bit", "2bits"}}); w.LinkStands({{"stop-bit", "1bit"}}); return w.Run(); }},
    {"StopBitIsNone", Cuts::Serial, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}, {"stop-bit", "1bit"}}); w.LinkStands({{"stop-bit", "1bit"}}); return w.Run(); }},
    {"Moved", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}, {"feed-adj", "1"}}); w.m_objRequest.m_bAllowLinkChange = true; return w.Run(); }},
    {"MovedWithItsPort", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}, {"socket-port", "9100"}}); w.m_objRequest.m_bAllowLinkChange = true; return w.Run(); }},
    {"MovedUnanswered", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}}); w.m_objRequest.m_bAllowLinkChange = true; w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; return w.Run(); }},
    {"MovedAndRefused", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"socket-port", "9100"}, {"ip-address", "10.1.2.3"}}); w.m_objRequest.m_bAllowLinkChange = true; w.Refuse("{IP;2"); return w.Run(); }},
    {"MovedAndLost", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}}); w.m_objRequest.m_bAllowLinkChange = true; From(w, 4, Mishap::Unreached); return w.Run(); }},
    {"MovedAndRefusedAtTheEnd", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}, {"dhcp", "ON"}}); w.m_objRequest.m_bAllowLinkChange = true; w.Refuse("{IH"); return w.Run(); }},
    {"StaysWhereItWas", Cuts::Lan, [](CWriteTranscript& w) { w.m_objModel.m_bMoves = false; w.Want({{"ip-address", "10.1.2.3"}, {"socket-port", "9100"}}); w.m_objRequest.m_bAllowLinkChange = true; return w.Run(); }},
    {"SocketOff", Cuts::Lan, [](CWriteTranscript& w) { w.m_objModel.m_bMoves = false; w.Want({{"socket", "OFF"}}); w.m_objRequest.m_bAllowLinkChange = true; return w.Run(); }},
    {"PlaceTaken", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}}); w.m_objRequest.m_bAllowLinkChange = true; w.m_objModel.m_bSomebodyElse = true; return w.Run(); }},
    {"PlaceTakenButNotNeeded", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_bSomebodyElse = true; return w.Run(); }},
    {"LineChanged", Cuts::Serial, [](CWriteTranscript& w) { w.Want({{"speed", "19200bps"}, {"parity", "ODD"}, {"stop-bit", "1bit"}}); w.m_objRequest.m_bAllowLinkChange = true; w.m_objModel.m_bSomebodyElse = true; return w.Run(); }},
    {"LineChangedAndUndone", Cuts::Serial, [](CWriteTranscript& w) { w.Want({{"speed", "19200bps"}, {"stop-bit", "1bit"}, {"feed-key", "PRINT"}}); w.m_objRequest.m_bAllowLinkChange = true; w.Stick("FeedKeyFunction"); return w.Run(); }},
    {"HostNameFilled", Cuts::Nothing, [](CWriteTranscript& w) { w.m_objModel.m_objPrinter.SetFill('\xFF'); w.Hold({{"dhcp-host-name", "shop 1"}}); w.Want({{"dhcp-client-id", "0123456789ABCDEF0123456789abcdef"}}); return w.Run(); }},
    {"HostNameBlank", Cuts::Nothing, [](CWriteTranscript& w) { w.Hold({{"dhcp-host-name", "shop 1"}}); w.Want({{"dhcp", "ON"}}); return w.Run(); }},
    {"ChangedAgainAfterTheUndoing", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls == 7) { w.Change({{"feed-adj", "2"}}); } }; return w.Run(); }},
    {"AnotherIsUnreadable", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_objPrinter.Items().m_objLanSetting->SetValue(7); return w.Run(); }},
    {"UnreadableAfterwards", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls >= 4) { w.m_objModel.m_objPrinter.Items().m_objCutPosDirection->SetValue(std::string("x")); } }; return w.Run(); }},
    {"WantedIsUnreadableAfterwards", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}, {"cut-adj", "1"}}); w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls >= 4) { w.m_objModel.m_objPrinter.Items().m_objCutPosDirection->SetValue(std::string("x")); } }; return w.Run(); }},
    {"UnderstoodAtTheThirdReading", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); Garble(w, 4, 6); return w.Run(); }},
    {"UnderstoodWhenItIsBroughtBack", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); Garble(w, 4, 7); return w.Run(); }},
    {"NotUnderstoodBehindTheUndoing", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; Garble(w, 7, 90); return w.Run(); }},
    {"NotUnderstoodAndAnotherIsAsItWas", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"dhcp", "ON"}, {"cut-adj", "0"}}); Garble(w, 4, 90); return w.Run(); }},
    {"BroughtBackNotUnderstood", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); Garble(w, 0, 900); return w.Restore(); }},
    {"LookedAtNotUnderstood", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); Garble(w, 0, 900); return w.Look(); }},
    {"LookedAtUnderstoodAtLast", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); const int n = w.m_objModel.m_iCalls; Garble(w, n, n + 2); return w.Look(); }},
    {"MovedAndTroubled", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}}); w.m_objRequest.m_bAllowLinkChange = true; w.m_objModel.m_iMishaps[3] = Mishap::Troubled; return w.Run(); }},
    {"StaysAndTroubled", Cuts::Lan, [](CWriteTranscript& w) { w.m_objModel.m_bMoves = false; w.Want({{"ip-address", "10.1.2.3"}}); w.m_objRequest.m_bAllowLinkChange = true; w.m_objModel.m_iMishaps[3] = Mishap::Troubled; return w.Run(); }},
    {"NothingCameOfIt", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unheard; return w.Run(); }},
    {"LineChangedLast", Cuts::Serial, [](CWriteTranscript& w) { w.Want({{"speed", "19200bps"}, {"stop-bit", "1bit"}, {"feed-adj", "1"}}); w.m_objRequest.m_bAllowLinkChange = true; return w.Run(); }},
    {"OtherIsUnreadableAfterwards", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls >= 4) { w.m_objModel.m_objPrinter.Items().m_objLanSetting->SetValue(7); } }; return w.Run(); }},
    {"MovedNothingGoesOut", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}}); w.m_objRequest.m_bAllowLinkChange = true; From(w, 3, Mishap::Unreached); return w.Run(); }},
    {"GoneAfterTheUndoing", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; From(w, 7, Mishap::Unreached); return w.Run(); }},
    {"NotBroughtBackRefusedInPart", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}, {"dhcp", "ON"}}); From(w, 5, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); w.Refuse("{Z2;2,"); return w.Restore(); }},
    {"OthersChangedAndAnotherWanted", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}, {"dhcp", "OFF"}, {"socket", "ON"}}); w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls == 4) { w.Change({{"dhcp", "ON"}}); } }; return w.Run(); }},
    {"AnotherValueForGood", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unanswered; w.m_objModel.m_fnBeforeCall = [&w] { if (w.m_objModel.m_iCalls >= 4) { w.Change({{"feed-adj", "2"}}); } }; return w.Run(); }},
    {"PowerCut", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::LatePowerCut; w.m_objModel.m_dPowerBack = 2; return w.Run(); }},
    {"PowerCutForGood", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::PowerCut; w.m_objModel.m_dPowerBack = 1000; return w.Run(); }},
    {"BroughtBack", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}, {"dhcp", "ON"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); return w.Restore(); }},
    {"BroughtBackFromElsewhere", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}, {"socket-port", "9100"}}); w.m_objRequest.m_bAllowLinkChange = true; From(w, 5, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); return w.Restore(); }},
    {"BroughtBackInAnotherLine", Cuts::Serial, [](CWriteTranscript& w) { w.Want({{"speed", "19200bps"}, {"stop-bit", "1bit"}}); w.m_objRequest.m_bAllowLinkChange = true; From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); return w.Restore(); }},
    {"NotBroughtBackUnread", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); return w.Restore(); }},
    {"NotBroughtBackRefused", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); w.Refuse("{Z2;2,"); return w.Restore(); }},
    {"NotBroughtBackOthers", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); w.Change({{"country", "7"}}); return w.Restore(); }},
    {"NotBroughtBackDoubtful", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-key", "PRINT"}, {"stop-bit", "2bits"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); return w.Restore(); }},
    {"LookedAtUnchanged", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); w.m_objModel.m_iMishaps[3] = Mishap::Unheard; From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); return w.Look(); }},
    {"LookedAtChanged", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); return w.Look(); }},
    {"LookedAtHalf", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}, {"cut-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); w.Change({{"cut-adj", "0"}}); return w.Look(); }},
    {"LookedAtOthers", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); w.Change({{"country", "7"}}); return w.Look(); }},
    {"LookedAtUnread", Cuts::Nothing, [](CWriteTranscript& w) { w.Want({{"feed-adj", "1"}}); From(w, 4, Mishap::Unreached); w.Run(); return w.Look(); }},
    {"LookedAtElsewhere", Cuts::Lan, [](CWriteTranscript& w) { w.Want({{"ip-address", "10.1.2.3"}}); w.m_objRequest.m_bAllowLinkChange = true; From(w, 4, Mishap::Unreached); w.Run(); w.m_objModel.m_iMishaps.clear(); return w.Look(); }},
};
// clang-format on

/// What written.txt tells below each name.
std::map<std::string, std::string> Told() {
    std::ifstream objFile(VARDEN_WRITE_JOBS);
    std::map<std::string, std::string> strTold;
    std::string strName;
    for (std::string strLine; std::getline(objFile, strLine);) {
        if (strLine.starts_with("== ")) {
            strName = strLine.substr(3);
        } else {
            strTold[strName] += strLine + "\n";
        }
    }
    return strTold;
}

class CWriteJobTest : public testing::TestWithParam<Scenario> {};

TEST_P(CWriteJobTest, ComesToWhatIsWritten) {
    CWriteTranscript objWrite(GetParam().m_iLink);
    EXPECT_EQ(GetParam().m_fnDo(objWrite), Told()[GetParam().m_strName]);
}

INSTANTIATE_TEST_SUITE_P(Changes, CWriteJobTest, testing::ValuesIn(Scenarios),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(CWriteJobReport, WhatIsBroughtBackIsWhatWasBefore) {
    CWriteTranscript objWrite(Cuts::Nothing);
    objWrite.Want({{"feed-adj", "1"}});
    From(objWrite, 4, Mishap::Unreached);
    objWrite.Run();
    const MSettings::Row& objOther = MSettings::Get("country");
    EXPECT_TRUE(objWrite.m_objPlan.m_objBefore.IsKnown(objOther)) << "what is not sent";
    EXPECT_TRUE(objWrite.m_objPlan.m_objAfter.IsKnown(objOther));
    objWrite.Restore();
    const MSettings::Row& objRow = MSettings::Get("feed-adj");
    EXPECT_TRUE(objWrite.m_objReport.m_objBefore.IsKnown(objRow));
    EXPECT_TRUE(objWrite.m_objReport.m_objWanted.IsKnown(objRow));
    EXPECT_FALSE(objWrite.m_objReport.m_objWanted.IsKnown(objOther));
    EXPECT_EQ(MSettingText::Show(objRow, objWrite.m_objReport.m_objWanted.Items()), "1.0");
    objWrite.Look();
    EXPECT_TRUE(objWrite.m_objReport.m_objBefore.IsKnown(objRow));
}

TEST(CWriteJobReport, FirstOnlyWhatIsNeededIsRead) {
    CWriteTranscript objWrite(Cuts::Nothing);
    objWrite.Want({{"feed-adj", "1"}});
    objWrite.m_objRequest.m_bCheckOnly = true;
    objWrite.Run();
    EXPECT_EQ(objWrite.m_objModel.m_strCommands,
              (std::vector<std::string>{"{Z5;0|}", "{Z5;1|}", "{Z5;0|}", "{Z5;1|}", "{Z5;3|}",
                                        "{Z5;4|}"}));
}

// What undoes a change has to carry something for what nobody has told.
TEST(CWriteJobReport, WhatIsNotReportedIsSentBackAsItWasSent) {
    CWriteTranscript objWrite(Cuts::Nothing);
    objWrite.Want({{"feed-key", "PRINT"}, {"stop-bit", "2bits"}});
    objWrite.Run();
    const MSettings::Row& objRow = MSettings::Get("stop-bit");
    const CWritePlan& objPlan = objWrite.m_objReport.m_objPlan;
    EXPECT_EQ(MSettingText::Show(objRow, objPlan.m_objBefore.Items()), "2bits");
    EXPECT_FALSE(objPlan.m_objBefore.IsKnown(objRow));
    EXPECT_TRUE(objPlan.m_objAfter.IsKnown(objRow));
}

TEST(CWriteJobTold, NothingIsWrittenThatIsNotTried) {
    std::map<std::string, std::string> strTold = Told();
    for (const Scenario& objScenario : Scenarios) {
        strTold.erase(objScenario.m_strName);
    }
    EXPECT_TRUE(strTold.empty()) << strTold.begin()->first;
}

}  // namespace
