// SPDX-License-Identifier: MIT
#pragma once

#include "production/ProductTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QtTest>

/// A production test window, pressed by its object names.
class ProductTestDriver {
public:
    explicit ProductTestDriver(const QString& port = QString(), const QString& image = QString())
    {
        qputenv("GNSS_SERIAL_PORTS", port.toLocal8Bit());
        window = new ProductTest;
        window->setWindowTitle("产测视图1");
        Find<QComboBox>("serialCbx")->setCurrentText(port);
        Find<QLineEdit>("versionFilePath")->setText(image);
    }
    ~ProductTestDriver() { delete window; }
    ProductTestDriver(const ProductTestDriver&) = delete;
    ProductTestDriver& operator=(const ProductTestDriver&) = delete;

    template <typename Widget> Widget* Find(const char* name) const { return window->findChild<Widget*>(name); }

    void Check(const char* name, bool on) const { Find<QCheckBox>(name)->setChecked(on); }
    void Set(const char* name, int value) const { Find<QSpinBox>(name)->setValue(value); }
    QString Text(const char* name) const { return Find<QLabel>(name)->text(); }
    QString Verdict() const { return Text("signalTestRltLbl"); }
    void ScanPn(const QString& text) const { Find<QLineEdit>("PNNodeLdt")->setText(text); }
    void Start() const { Find<QPushButton>("startTestBtn")->click(); }
    void Stop() const { Find<QPushButton>("stopTestBtn")->click(); }
    bool Running() const { return !Find<QPushButton>("startTestBtn")->isEnabled(); }

    /// The log without the times.
    QStringList Log() const
    {
        QStringList lines = Find<QPlainTextEdit>("SysStatus")->toPlainText().split('\n');
        lines.replaceInStrings(QRegularExpression("^\\[\\d\\d:\\d\\d:\\d\\d\\] "), QString());
        return lines;
    }

    int Rows() const { return Find<QTableView>("testRltTable")->model()->rowCount(); }
    QStringList Row(int row) const
    {
        const QAbstractItemModel* model = Find<QTableView>("testRltTable")->model();
        QStringList texts;
        for (int column = 0; column < model->columnCount(); ++column) {
            texts.append(model->index(row, column).data().toString());
        }
        return texts;
    }

    static void CleanFolders()
    {
        for (const char* folder : {"/ProductTest", "/GnssData"}) {
            QDir(QCoreApplication::applicationDirPath() + folder).removeRecursively();
        }
    }

    /// Paths in a folder beside the program, oldest name first.
    static QStringList Files(const QString& folder, const QString& pattern = "*")
    {
        const QDir dir(QCoreApplication::applicationDirPath() + '/' + folder);
        QStringList paths;
        const QStringList names = dir.entryList({pattern}, QDir::Files, QDir::Name);
        for (const QString& name : names) {
            paths.append(dir.filePath(name));
        }
        return paths;
    }
    static QStringList Reports() { return Files("ProductTest", "*.txt"); }
    static QStringList Results() { return Files("ProductTest", "ProductTestRslt_*.csv"); }
    static QStringList RawLogs() { return Files("GnssData", "*.bin"); }
    static QByteArray Content(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QPointer<ProductTest> window;
};
