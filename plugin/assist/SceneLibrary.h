// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// A scene of the library as its description gives it.
struct SceneRecord {
    QString name;
    QString longitude; ///< degrees
    QString latitude;  ///< degrees
    QString altitude;  ///< metres; shown only
    QString utcStart;  ///< shown only
    QString unixStart; ///< Unix seconds
};

/// Reads the description (`sence.json`) of a scene library: an object whose array `sence` holds an object of six
/// texts per scene. What isn't a text reads as empty. False, with `scenes` as it was, when there is no such array.
bool ReadScenes(const QByteArray& json, QMap<int, SceneRecord>& scenes);
