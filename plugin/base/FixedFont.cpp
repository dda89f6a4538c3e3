// SPDX-License-Identifier: MIT
#include "base/FixedFont.h"

#include <QFontDatabase>
#include <QFontInfo>

QFont FixedFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!QFontInfo(font).fixedPitch()) {
        font.setFamily("monospace");
    }
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}
