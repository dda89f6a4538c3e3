// SPDX-License-Identifier: MIT
#pragma once

#include "tools/firmware/ImageDescription.h"

#include <QTemporaryDir>
#include <QtTest>

/// An image made of its description, while it lives.
class ImageFile {
public:
    explicit ImageFile(const QByteArray& description)
    {
        std::string image;
        std::string error;
        if (!MakeImage(description.toStdString(), image, error)) {
            qFatal("%s", error.c_str());
        }
        path = m_folder.filePath("image.bin");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(image.data(), static_cast<qint64>(image.size())) < 0) {
            qFatal("the image cannot be written");
        }
    }

    QString path;

private:
    QTemporaryDir m_folder;
};
