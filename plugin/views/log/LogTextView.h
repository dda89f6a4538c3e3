// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ClosingWidget.h"

class GnssSaveData;
class QBoxLayout;
class QPlainTextEdit;
class QToolButton;
class ViewRefresh;

/// What the NMEA and the hex view have in common: running text that is written to a working log, a row of
/// buttons, and paging back through earlier logs by turning the wheel at the top of the text.
class LogTextView : public ClosingWidget {
    Q_OBJECT

public:
    /// Makes the next page back the newest of the earlier logs again.
    void ResetHistory() { historyIndex = 1; }

    /// The size of a window that is neither tiled nor maximised.
    QSize sizeHint() const override { return {480, 360}; }

signals:
    void ScrolledPastTop();

public slots:
    void SlotTimeBtnClicked();
    void SlotClearBtnClicked();
    void SlotBottomBtnClicked();

    /// Puts the next older log above the text that is shown.
    void ProcScrolledPastTop();

protected:
    /// `logName` is the folder of the log under GnssData/logs; `codecName` the text codec by which earlier logs
    /// are read, null for the locale's.
    LogTextView(const QString& logName, const char* codecName, QWidget* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    /// An icon button named `name`, appended to the row.
    QToolButton* AddButton(const QString& name, const QString& icon, const QString& toolTip, bool checkable);

    /// "[hh:mm:ss] " when the time is to be shown, else nothing.
    QString TimePrefix() const;

    /// Collects a line for the next ShowLines.
    void AddLine(const QString& line);

    /// Has the collected lines appended to the text in one go, since every append costs a layout: at once while
    /// the view is hidden, else with the next renewal.
    void ShowLines();

    QPlainTextEdit* textEdit = nullptr;
    QToolButton* timeBtn = nullptr;
    QToolButton* clearBtn = nullptr;
    QToolButton* bottomBtn = nullptr;
    QBoxLayout* m_row = nullptr;
    GnssSaveData* saveData = nullptr;

private:
    void FlushLines();

    ViewRefresh* m_refresh = nullptr;
    bool showTime = false;
    int historyIndex = 1; ///< next log to show, newest first; 0 is the one being written
    QString m_logName;
    const char* m_codecName;
    QString m_lines;
    bool m_haveLines = false;
    bool m_follows = true; ///< the end of the text is in sight
};
