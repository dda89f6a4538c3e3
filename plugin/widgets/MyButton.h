// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QPushButton>
#include <QString>
#include <QStringList>

class QAction;
class QActionGroup;
class QMenu;

/// A tool bar button of two parts: an inner button, and at its right a strip that opens a menu of choices.
class MyButton : public QPushButton {
    Q_OBJECT

public:
    /// `width` in pixels, strip included; the height is 25.
    MyButton(const QIcon& icon, int width, QWidget* parent);
    MyButton(const QString& text, int width, QWidget* parent);

    /// Replaces the choices. Those that are also in `separators` are greyed and can't be chosen.
    void SetMenuEntries(const QStringList& texts, const QStringList& separators = {});

    /// Checks a choice and fires nothing. A text that isn't among the choices is added and fires, see
    /// SlotMenuAddAction; an empty one is ignored.
    void SelectEntry(const QString& text);

    QStringList Entries() const { return m_entries; }

    /// These go to the inner button.
    void SetToolTip(const QString& text);
    void SetText(const QString& text);
    void SetIcon(const QIcon& icon);
    QPushButton* Inner() const { return m_inner; }

signals:
    void triggered(QString str);
    void BtnClicked();
    void ChildBtnClicked();

public slots:
    void SlotActtriggered(QAction* act);
    void SlotChilBtnClicked();

    /// Adds a choice, checks it and shows it on the button; a choice that is there already is chosen instead.
    /// `triggered` fires in both cases. An empty text is ignored.
    void SlotMenuAddAction(const QString& str);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Init(int width);
    QAction* AddAction(const QString& text);
    QAction* FindAction(const QString& text) const;

    QPushButton* m_inner = nullptr;
    QMenu* m_menu = nullptr;
    QActionGroup* m_group = nullptr;
    QStringList m_entries;
};
