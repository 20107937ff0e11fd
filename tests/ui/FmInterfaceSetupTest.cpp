#include "ui/FmInterfaceSetup.h"

#include "link/CInterface.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "ui/UCSpinEdit.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::array AddressParts{"SeLan1", "SeLan2", "SeLan3", "SeLan4"};

class FmInterfaceSetupTest : public ::testing::Test {
protected:
    void Open(std::int16_t p_iInterfaceIndex) {
        ASSERT_TRUE(m_objDialog.InitializeItem(m_objInterface, p_iInterfaceIndex));
        m_objDialog.show();
        m_objDialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_objDialog));
    }

    template <typename Control>
    Control& Get(const char* p_strName) {
        auto* objControl = m_objDialog.findChild<Control*>(p_strName);
        if (objControl == nullptr) {
            throw std::runtime_error(std::string("no such control: ") + p_strName);
        }
        return *objControl;
    }

    QComboBox& List(const char* p_strName) { return Get<QComboBox>(p_strName); }
    UCSpinEdit& Field(const char* p_strName) { return Get<UCSpinEdit>(p_strName); }
    QString Shown(const char* p_strName) {
        return Field(p_strName).findChild<QLineEdit*>("CText")->text();
    }
    void Click(const char* p_strName) {
        QTest::mouseClick(&Get<QPushButton>(p_strName), Qt::LeftButton);
    }
    void Type(const char* p_strName, const char* p_strText) {
        UCSpinEdit& objField = Field(p_strName);
        objField.setFocus();
        objField.selectAll();
        QTest::keyClicks(&objField, p_strText);
    }
    void ChooseOtherSerialSettings() {
        List("cmbComPort").setCurrentIndex(8);
        List("cmbSpeed").setCurrentIndex(5);
        List("cmbDataLeg").setCurrentIndex(0);
        List("cmbStopBit").setCurrentIndex(1);
        List("cmbParity").setCurrentIndex(2);
    }
    void ExpectUntouched() const {
        EXPECT_EQ(m_objInterface.GetComPortNumber(), 1);
        EXPECT_EQ(m_objInterface.GetSerialInfo(), "9600,E,8,1");
        EXPECT_EQ(m_objInterface.GetIpAddress(), "192.168.10.20");
    }

    CInterface m_objInterface;
    CFakeMessageBox m_objBoxes;
    FmInterfaceSetup m_objDialog{m_objBoxes};
};

QStringList Entries(const QComboBox& p_objList) {
    QStringList arrEntries;
    for (int i = 0; i < p_objList.count(); ++i) {
        arrEntries.append(p_objList.itemText(i));
    }
    return arrEntries;
}

TEST_F(FmInterfaceSetupTest, ShowsItsCaptions) {
    EXPECT_EQ(m_objDialog.windowTitle(), "Interface Setup");
    EXPECT_TRUE(m_objDialog.isModal());
    EXPECT_EQ(m_objDialog.font().family(), "Arial");
    EXPECT_EQ(Get<QGroupBox>("FrRs232cSetup").title(), "RS-232C");
    EXPECT_EQ(Get<QGroupBox>("FrLanSetup").title(), "LAN");
    EXPECT_EQ(Get<QPushButton>("btnSet").text(), "SET");
    EXPECT_EQ(Get<QPushButton>("btnCancel").text(), "CANCEL");
    EXPECT_TRUE(Get<QPushButton>("btnSet").isDefault());
}

TEST_F(FmInterfaceSetupTest, EveryFieldHasItsLabel) {
    QStringList arrLabels;
    for (const auto* objLabel : m_objDialog.findChildren<QLabel*>()) {
        if (objLabel->buddy() != nullptr) {
            arrLabels.append(objLabel->buddy()->objectName() + "=" + objLabel->text());
        }
    }
    EXPECT_EQ(arrLabels,
              (QStringList{"cmbComPort=COM PORT", "cmbSpeed=SPEED", "cmbDataLeg=DATA LENG.",
                           "cmbStopBit=STOP BIT", "cmbParity=PARITY", "SeLan1=IP-Address"}));
    EXPECT_EQ(List("cmbDataLeg").accessibleName(), "DATA LENG.");
    EXPECT_EQ(Field("SeLan1").accessibleName(), "IP-Address 1");
    EXPECT_EQ(Field("SeLan4").accessibleName(), "IP-Address 4");
}

TEST_F(FmInterfaceSetupTest, ListsHoldTheirEntries) {
    Open(0);
    EXPECT_EQ(Entries(List("cmbComPort")), (QStringList{"COM1", "COM2", "COM3", "COM4", "COM5",
                                                        "COM6", "COM7", "COM8", "COM9"}));
    EXPECT_EQ(Entries(List("cmbSpeed")), (QStringList{"2400 bps", "4800 bps", "9600 bps",
                                                      "19200 bps", "38400 bps", "115200 bps"}));
    EXPECT_EQ(Entries(List("cmbDataLeg")), (QStringList{"7 bit", "8 bit"}));
    EXPECT_EQ(Entries(List("cmbStopBit")), (QStringList{"1 bit", "2 bit"}));
    EXPECT_EQ(Entries(List("cmbParity")), (QStringList{"NONE", "EVEN", "ODD"}));
}

TEST_F(FmInterfaceSetupTest, ShowsTheDefaults) {
    Open(0);
    EXPECT_EQ(List("cmbComPort").currentText(), "COM1");
    EXPECT_EQ(List("cmbSpeed").currentText(), "9600 bps");
    EXPECT_EQ(List("cmbDataLeg").currentText(), "8 bit");
    EXPECT_EQ(List("cmbStopBit").currentText(), "1 bit");
    EXPECT_EQ(List("cmbParity").currentText(), "EVEN");
    EXPECT_EQ(Shown("SeLan1"), "192");
    EXPECT_EQ(Shown("SeLan2"), "168");
    EXPECT_EQ(Shown("SeLan3"), "10");
    EXPECT_EQ(Shown("SeLan4"), "20");
}

TEST_F(FmInterfaceSetupTest, ShowsWhatIsStoredNotTheDefaults) {
    m_objInterface.m_objComPortIndex->SetValue(3);
    m_objInterface.m_objParityIndex->SetValue("2");
    m_objInterface.m_objIpAddress4->SetValue("77");
    Open(1);
    EXPECT_EQ(List("cmbComPort").currentText(), "COM4");
    EXPECT_EQ(List("cmbParity").currentText(), "ODD");
    EXPECT_EQ(Shown("SeLan4"), "77");
}

TEST_F(FmInterfaceSetupTest, AValueThatNoListHasStopsTheDialog) {
    // clang-format off
    const std::vector<std::pair<ItemRef CInterface::*, CItemValue>> arrCases{
        {&CInterface::m_objComPortIndex, 9},
        {&CInterface::m_objSpeedIndex, 6},
        {&CInterface::m_objDataLengthIndex, 2},
        {&CInterface::m_objStopBitIndex, -1},
        {&CInterface::m_objParityIndex, 3},
        {&CInterface::m_objParityIndex, "odd"},
        {&CInterface::m_objIpAddress2, "host"},
    };
    // clang-format on
    for (const auto& [objSlot, vValue] : arrCases) {
        CInterface objInterface;
        (objInterface.*objSlot)->SetValue(vValue);
        FmInterfaceSetup objDialog(m_objBoxes);
        EXPECT_FALSE(objDialog.InitializeItem(objInterface, 0));
        EXPECT_TRUE(objDialog.CancelFlag());
    }
}

TEST_F(FmInterfaceSetupTest, SerialAndUsbEditTheSerialGroupOnly) {
    for (const std::int16_t iIndex : std::vector<std::int16_t>{0, 2}) {
        CInterface objInterface;
        FmInterfaceSetup objDialog(m_objBoxes);
        ASSERT_TRUE(objDialog.InitializeItem(objInterface, iIndex));
        EXPECT_TRUE(objDialog.findChild<QGroupBox*>("FrRs232cSetup")->isEnabled());
        EXPECT_FALSE(objDialog.findChild<QGroupBox*>("FrLanSetup")->isEnabled());
        for (const char* strName :
             {"cmbComPort", "cmbSpeed", "cmbDataLeg", "cmbStopBit", "cmbParity"}) {
            EXPECT_TRUE(objDialog.findChild<QComboBox*>(strName)->isEnabled()) << strName;
        }
        for (const char* strName : AddressParts) {
            EXPECT_FALSE(objDialog.findChild<UCSpinEdit*>(strName)->Enable()) << strName;
        }
    }
}

TEST_F(FmInterfaceSetupTest, LanEditsTheLanGroupOnly) {
    Open(1);
    EXPECT_FALSE(Get<QGroupBox>("FrRs232cSetup").isEnabled());
    EXPECT_TRUE(Get<QGroupBox>("FrLanSetup").isEnabled());
    for (const char* strName :
         {"cmbComPort", "cmbSpeed", "cmbDataLeg", "cmbStopBit", "cmbParity"}) {
        EXPECT_FALSE(List(strName).isEnabledTo(&Get<QGroupBox>("FrRs232cSetup"))) << strName;
    }
    for (const char* strName : AddressParts) {
        EXPECT_TRUE(Field(strName).Enable()) << strName;
        EXPECT_TRUE(Field(strName).isEnabled()) << strName;
        EXPECT_EQ(Field(strName).buttonSymbols(), QAbstractSpinBox::NoButtons) << strName;
    }
}

TEST_F(FmInterfaceSetupTest, SetStoresTheFiveSerialItemsAndNothingElse) {
    Open(0);
    ChooseOtherSerialSettings();
    Field("SeLan1").SetValue(7);
    Click("btnSet");
    EXPECT_FALSE(m_objDialog.isVisible());
    EXPECT_FALSE(m_objDialog.CancelFlag());
    EXPECT_EQ(m_objDialog.result(), QDialog::Accepted);
    EXPECT_EQ(m_objInterface.m_objComPortIndex->GetValue(), CItemValue(8));
    EXPECT_EQ(m_objInterface.GetComPortNumber(), 9);
    EXPECT_EQ(m_objInterface.GetSerialInfo(), "115200,O,7,2");
    EXPECT_EQ(m_objInterface.GetIpAddress(), "192.168.10.20");
    EXPECT_EQ(m_objInterface.GetSocketPortNumber(), "08000");
}

TEST_F(FmInterfaceSetupTest, UsbStoresTheSerialItemsToo) {
    Open(2);
    ChooseOtherSerialSettings();
    Click("btnSet");
    EXPECT_EQ(m_objInterface.GetSerialInfo(), "115200,O,7,2");
    EXPECT_EQ(m_objInterface.GetIpAddress(), "192.168.10.20");
}

TEST_F(FmInterfaceSetupTest, SetStoresTheAddressAndNothingElse) {
    Open(1);
    ChooseOtherSerialSettings();
    Type("SeLan1", "10");
    Type("SeLan2", "0");
    Type("SeLan3", "007");
    Type("SeLan4", "255");
    Click("btnSet");
    EXPECT_FALSE(m_objDialog.CancelFlag());
    EXPECT_EQ(m_objInterface.GetIpAddress(), "10.0.7.255");
    EXPECT_EQ(m_objInterface.GetComPortNumber(), 1);
    EXPECT_EQ(m_objInterface.GetSerialInfo(), "9600,E,8,1");
    EXPECT_EQ(m_objInterface.GetGateway(), "000.000.000.000");
    EXPECT_EQ(m_objInterface.GetSubnetMas(), "255.255.255.000");
    EXPECT_EQ(m_objInterface.GetSocketPortNumber(), "08000");
}

TEST_F(FmInterfaceSetupTest, AnAddressPartTakesFiveCharacters) {
    Open(1);
    for (const char* strName : AddressParts) {
        Type(strName, "123456");
        EXPECT_EQ(Shown(strName), "12345") << strName;
        m_objBoxes.Expect(UCSpinEdit::RangeMessage);
        QTest::keyClick(&Field(strName), Qt::Key_Tab);
        m_objBoxes.Verify();
    }
}

TEST_F(FmInterfaceSetupTest, AnAddressPartGoesFrom0To255) {
    Open(1);
    for (const char* strName : AddressParts) {
        SCOPED_TRACE(strName);
        const QString strBefore = Shown(strName);
        for (const char* strOutside : {"-1", "256"}) {
            Type(strName, strOutside);
            m_objBoxes.Expect(UCSpinEdit::RangeMessage);
            QTest::keyClick(&Field(strName), Qt::Key_Tab);
            m_objBoxes.Verify();
            EXPECT_EQ(Shown(strName), strBefore);
        }
        for (const char* strInside : {"0", "255"}) {
            Type(strName, strInside);
            QTest::keyClick(&Field(strName), Qt::Key_Tab);
            EXPECT_EQ(Shown(strName), strInside);
        }
    }
}

TEST_F(FmInterfaceSetupTest, AnAddressPartStepsByOneAndStopsAtItsBounds) {
    Open(1);
    for (const char* strName : AddressParts) {
        SCOPED_TRACE(strName);
        const auto Step = [&](Qt::Key p_iKey) {
            QTest::keyClick(&Field(strName), p_iKey);
            return Shown(strName);
        };
        Field(strName).setFocus();
        ASSERT_TRUE(Field(strName).SetValue(20));
        EXPECT_EQ(Step(Qt::Key_Up), "21");
        EXPECT_EQ(Step(Qt::Key_Down), "20");
        ASSERT_TRUE(Field(strName).SetValue(1));
        EXPECT_EQ(Step(Qt::Key_Down), "0");
        EXPECT_EQ(Step(Qt::Key_Down), "0");
        ASSERT_TRUE(Field(strName).SetValue(254));
        EXPECT_EQ(Step(Qt::Key_Up), "255");
        EXPECT_EQ(Step(Qt::Key_Up), "255");
    }
}

TEST_F(FmInterfaceSetupTest, SetLooksAtTheFieldThatStillHasTheFocus) {
    Open(1);
    Type("SeLan4", "256");
    m_objBoxes.Expect(UCSpinEdit::RangeMessage);
    Click("btnSet");
    EXPECT_TRUE(m_objDialog.isVisible());
    EXPECT_TRUE(m_objDialog.CancelFlag());
    EXPECT_EQ(Shown("SeLan4"), "20");
    ExpectUntouched();
    Type("SeLan4", "21");
    Click("btnSet");
    EXPECT_FALSE(m_objDialog.isVisible());
    EXPECT_EQ(m_objInterface.GetIpAddress(), "192.168.10.21");
}

TEST_F(FmInterfaceSetupTest, SetHasAllFieldsCheckedUntilOneIsRefused) {
    Open(1);
    Field("SeLan1").setFocus();
    const auto Put = [this](const char* p_strName, const char* p_strText) {
        Field(p_strName).findChild<QLineEdit*>("CText")->setText(p_strText);
    };
    Put("SeLan2", "300");
    Put("SeLan3", "7");
    Put("SeLan4", "99999");
    for (const char* strFourth : {"99999", "20"}) {
        m_objBoxes.Expect(UCSpinEdit::RangeMessage);
        Click("btnSet");
        m_objBoxes.Verify();
        EXPECT_TRUE(m_objDialog.isVisible());
        EXPECT_EQ(Shown("SeLan2"), "168");
        EXPECT_EQ(Shown("SeLan4"), strFourth);
        ExpectUntouched();
    }
    Click("btnSet");
    EXPECT_FALSE(m_objDialog.isVisible());
    EXPECT_EQ(m_objInterface.GetIpAddress(), "192.168.7.20");
}

TEST_F(FmInterfaceSetupTest, ReturnInAFieldIsSet) {
    Open(1);
    Type("SeLan4", "abc");
    QTest::keyClick(&Field("SeLan4"), Qt::Key_Return);
    EXPECT_FALSE(m_objDialog.isVisible());
    EXPECT_FALSE(m_objDialog.CancelFlag());
    EXPECT_EQ(m_objInterface.GetIpAddress(), "192.168.10.20");
}

TEST_F(FmInterfaceSetupTest, ReturnInAListIsSet) {
    Open(0);
    List("cmbSpeed").setFocus();
    QTest::keyClick(&List("cmbSpeed"), Qt::Key_Down);
    QTest::keyClick(&List("cmbSpeed"), Qt::Key_Return);
    EXPECT_FALSE(m_objDialog.CancelFlag());
    EXPECT_EQ(m_objInterface.GetSerialInfo(), "19200,E,8,1");
}

TEST_F(FmInterfaceSetupTest, TheCancelFlagIsSetFromTheBeginning) {
    EXPECT_TRUE(m_objDialog.CancelFlag());
    Open(0);
    EXPECT_TRUE(m_objDialog.CancelFlag());
}

TEST_F(FmInterfaceSetupTest, CancelCloseBoxAndEscLeaveEverythingUntouched) {
    const std::vector<std::function<void()>> arrWays{
        [this] { Click("btnCancel"); },
        [this] { m_objDialog.close(); },
        [this] { QTest::keyClick(&Field("SeLan1"), Qt::Key_Escape); },
    };
    for (const auto& fnClose : arrWays) {
        Open(1);
        Type("SeLan1", "999");
        fnClose();
        EXPECT_FALSE(m_objDialog.isVisible());
        EXPECT_TRUE(m_objDialog.CancelFlag());
        EXPECT_EQ(m_objDialog.result(), QDialog::Rejected);
        ExpectUntouched();
    }
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(FmInterfaceSetupTest, CancelAfterSetCountsAsCancel) {
    Open(0);
    Click("btnSet");
    EXPECT_FALSE(m_objDialog.CancelFlag());
    Open(0);
    Click("btnCancel");
    EXPECT_TRUE(m_objDialog.CancelFlag());
}

TEST_F(FmInterfaceSetupTest, TabGoesInReadingOrder) {
    for (const auto& [iIndex, arrOrder] : std::vector<std::pair<std::int16_t, QStringList>>{
             {0, {"cmbComPort", "cmbSpeed", "cmbDataLeg", "cmbStopBit", "cmbParity"}},
             {1, {"SeLan1", "SeLan2", "SeLan3", "SeLan4"}}}) {
        Open(iIndex);
        m_objDialog.findChild<QWidget*>(arrOrder.front())->setFocus();
        for (const QString& strName : arrOrder + QStringList{"btnSet", "btnCancel"}) {
            ASSERT_NE(m_objDialog.focusWidget(), nullptr);
            EXPECT_EQ(m_objDialog.focusWidget()->objectName(), strName);
            QTest::keyClick(m_objDialog.focusWidget(), Qt::Key_Tab);
        }
    }
}

TEST_F(FmInterfaceSetupTest, FieldsOfBothGroupsBeginInOneLine) {
    Open(0);
    const auto Left = [this](QWidget& p_objField) {
        return p_objField.mapTo(&m_objDialog, QPoint()).x();
    };
    EXPECT_EQ(Left(Field("SeLan1")), Left(List("cmbSpeed")));
    EXPECT_EQ(Left(List("cmbComPort")), Left(List("cmbParity")));
}

TEST_F(FmInterfaceSetupTest, TheWheelChangesOnlyTheListWithTheFocus) {
    Open(0);
    QComboBox& objList = List("cmbSpeed");
    const auto fnTurn = [&objList] {
        const QPointF objPoint = objList.rect().center();
        QWheelEvent objEvent(objPoint, objList.mapToGlobal(objPoint), {}, {0, -120}, Qt::NoButton,
                             Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&objList, &objEvent);
        return objEvent.isAccepted();
    };
    List("cmbParity").setFocus();
    EXPECT_FALSE(fnTurn());
    EXPECT_EQ(objList.currentText(), "9600 bps");
    EXPECT_FALSE(objList.hasFocus());
    EXPECT_EQ(objList.focusPolicy(), Qt::StrongFocus);
    objList.setFocus();
    EXPECT_TRUE(fnTurn());
    EXPECT_EQ(objList.currentText(), "19200 bps");
}

}  // namespace
