// SPDX-License-Identifier: MIT
#include "views/AgeEdit.h"

#include <QFontMetrics>

namespace {

constexpr int kLargestText = 13; ///< pixels
constexpr int kSmallestText = 7;

} // namespace

AgeEdit::AgeEdit(QWidget* parent) : QLineEdit(parent)
{
    setObjectName("ageEdit");
    setReadOnly(true);
    setFocusPolicy(Qt::NoFocus);
    setFixedSize(100, 25);
    ShowAge(0);
}

void AgeEdit::ShowAge(quint64 seconds)
{
    const QString text = tr("数据龄期: ") + QString::number(seconds) + "s";
    // Asked for with every record, and mostly the same.
    if (text == this->text()) {
        return;
    }
    // The field's size is fixed, so the text is made to fit.
    constexpr int room = 100 - 12;
    QFont fitting = font();
    int pixelSize = kLargestText;
    do {
        fitting.setPixelSize(pixelSize);
    } while (QFontMetrics(fitting).horizontalAdvance(text) > room && --pixelSize >= kSmallestText);
    if (fitting.pixelSize() != font().pixelSize()) {
        setFont(fitting);
    }
    setText(text);
}
