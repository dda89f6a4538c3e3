// SPDX-License-Identifier: MIT
#pragma once

#include <QTranslator>

/// The catalogues in use: the host's texts and Qt's in Chinese, or the plug-in's in English.
class HostTranslators {
public:
    /// Takes the catalogues of `language` from `folder` in place of the earlier ones.
    void Install(int language, const QString& folder);

private:
    QTranslator m_hostTexts;
    QTranslator m_pluginTexts;
    QTranslator m_qtTexts;
};
