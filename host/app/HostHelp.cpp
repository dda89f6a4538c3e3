// SPDX-License-Identifier: MIT
#include "host/app/HostHelp.h"

#include "host/app/HostWindowText.h"

#include <QCoreApplication>
#include <QMessageBox>

void ShowAbout(QWidget* window)
{
    QMessageBox::about(
        window, HostWindowText::tr("About GNSS Workbench"),
        HostWindowText::tr("<h3>GNSS Workbench %1</h3>"
                           "<p>Watch, configure, test and replay a GNSS receiver on a serial line.</p>"
                           "<p>Built with Qt %2.</p>")
            .arg(QCoreApplication::applicationVersion(), QLatin1String(qVersion())));
}

void ShowShortHelp(QWidget* window)
{
    QMessageBox box(window);
    box.setWindowTitle(HostWindowText::tr("Short Help"));
    box.setTextFormat(Qt::RichText);
    box.setText(HostWindowText::tr(
        "<h3>First steps</h3>"
        "<ul>"
        "<li>The first button of the tool bar opens and closes the port; its arrow offers the ports. "
        "At the start the virtual receiver's port is open already.</li>"
        "<li>A click on an entry of the control panel opens that view or brings it to the front.</li>"
        "<li>The start button sends the start or stop command to the receiver.</li>"
        "<li>Every byte received is kept in the folder GnssData beside the program.</li>"
        "<li><b>Receiver</b> chooses the product, switches the virtual receiver and lets it play a "
        "recorded capture.</li>"
        "<li><b>View &gt; Debug Log</b> (F12) shows what happens inside.</li>"
        "</ul>"));
    box.exec();
}
