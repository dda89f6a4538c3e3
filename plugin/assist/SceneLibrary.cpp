// SPDX-License-Identifier: MIT
#include "assist/SceneLibrary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

bool ReadScenes(const QByteArray& json, QMap<int, SceneRecord>& scenes)
{
    const QJsonValue list = QJsonDocument::fromJson(json).object().value(QLatin1String("sence"));
    if (!list.isArray()) {
        return false;
    }
    scenes.clear();
    const QJsonArray array = list.toArray();
    for (int i = 0; i < array.size(); ++i) {
        const QJsonObject object = array.at(i).toObject();
        auto text = [&object](const char* key) { return object.value(QLatin1String(key)).toString(); };
        scenes.insert(i, {text("name"), text("longitude"), text("latitude"), text("altitude"), text("utc_start"),
                          text("unix_start_time")});
    }
    return true;
}
