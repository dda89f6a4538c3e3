#pragma once

#include <QWidget>

/// The window that pulls the sentences out of raw captures.
class FetchNmea : public QWidget {
    Q_OBJECT

public:
    explicit FetchNmea(QWidget* parent = nullptr);
};
