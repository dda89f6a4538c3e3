// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

namespace customComboBox {

/// A combo box that shows a widget of its own in the place of the text, and a drawn arrow at the right.
class CustomComboBox : public QComboBox {
    Q_OBJECT

public:
    explicit CustomComboBox(QWidget* parent = nullptr);

    /// Takes the widget as a child; one that was there before is deleted. Null is none.
    void SetChildWidget(QWidget* child);
    QWidget* ChildWidget() const { return m_child; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* m_child = nullptr;
};

} // namespace customComboBox
