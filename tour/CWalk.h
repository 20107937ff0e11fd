#pragma once

#include "tour/CTour.h"

#include <QString>

#include <string>

/// The page of a walk: what was done at each stop, the window's head and foot as they looked then,
/// and what the line at the foot said. Nothing of it is written by hand but what was done.
class CWalk {
public:
    /// Adds to p_strFolder/walk-through.md, which may be there already; pictures go into
    /// p_strFolder/pictures/walk, which is there. p_objTour is not owned and outlives this.
    CWalk(CTour& p_objTour, QString p_strFolder);

    /// Begins the page anew.
    static void Begin(const QString& p_strFolder);

    /// A heading; the pictures from here on begin with p_strPictures.
    void Section(const std::string& p_strTitle, const QString& p_strPictures);

    /// A stop: p_strDone says what was done.
    void Stop(const std::string& p_strDone);

    /// Presses p_strButton and deals with the boxes that come, which belong to the next stop.
    void Press(const QString& p_strButton);

    /// The same, and in the middle of it, so many milliseconds later, a stop.
    void PressAndLook(const QString& p_strButton, int p_iMilliseconds, const std::string& p_strDone,
                      const std::function<void()>& p_fnThen = nullptr);

    /// Waits until the first place of the line says p_strText.
    void AwaitLink(const std::string& p_strText);

    /// "Setup" with this address in it (empty: as it is), then "SET". In the middle as above, if
    /// p_strDone is not empty.
    void SetUp(const QString& p_strAddress, int p_iMilliseconds = 0,
               const std::string& p_strDone = {}, const std::function<void()>& p_fnThen = nullptr);

private:
    void Write(const std::string& p_strText) const;
    [[nodiscard]] std::string Place(const char* p_strName, const QString& p_strLabel) const;
    void DealWithBox();
    void Later(int p_iMilliseconds, const std::string& p_strDone,
               const std::function<void()>& p_fnThen);

    CTour& m_objTour;
    QString m_strFolder;
    QString m_strPictures;
    QString m_strAddress;
    std::string m_strBoxes;  // since the last stop
    int m_iStop = 0;
};
