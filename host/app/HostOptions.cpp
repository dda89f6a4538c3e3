// SPDX-License-Identifier: MIT
#include "host/app/HostOptions.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace {

void AddOptions(QCommandLineParser& parser)
{
    using Option = QCommandLineOption;
    parser.setApplicationDescription(
        QStringLiteral("GNSS Workbench: watch, configure, test and replay a GNSS receiver.\n"
                       "Without options a virtual receiver is started and its line opened."));
    parser.addOptions({
        Option({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help and end.")),
        Option(QStringLiteral("version"), QStringLiteral("Show the version and end.")),
        Option(QStringLiteral("product"),
               QStringLiteral("Product number: 27, 31, or any other for the default product."),
               QStringLiteral("N")),
        Option(QStringLiteral("language"), QStringLiteral("Language of this run."), QStringLiteral("zh|en")),
        Option(QStringLiteral("no-receiver"), QStringLiteral("Start no virtual receiver.")),
        Option(QStringLiteral("receiver"), QStringLiteral("Program of the virtual receiver."),
               QStringLiteral("PATH")),
        Option(QStringLiteral("port"), QStringLiteral("Open this port; no virtual receiver is started."),
               QStringLiteral("PATH")),
        Option(QStringLiteral("idle"), QStringLiteral("The virtual receiver waits for a start command.")),
        Option(QStringLiteral("capture"), QStringLiteral("The virtual receiver plays this capture."),
               QStringLiteral("FILE")),
        Option(QStringLiteral("speed"), QStringLiteral("Speed at which the capture is played; 1 is its own pace."),
               QStringLiteral("N")),
        Option(QStringLiteral("receiver-arg"),
               QStringLiteral("Argument for the virtual receiver; may be repeated."), QStringLiteral("ARG")),
        Option(QStringLiteral("station"),
               QStringLiteral("Offer this many more virtual receivers, up to 16, for the firmware and production "
                              "windows."),
               QStringLiteral("N")),
        Option(QStringLiteral("no-service"), QStringLiteral("Start no local assistance service.")),
        Option(QStringLiteral("service"), QStringLiteral("Program of the assistance service."),
               QStringLiteral("PATH")),
        Option(QStringLiteral("service-arg"),
               QStringLiteral("Argument for the assistance service; may be repeated."), QStringLiteral("ARG")),
        Option(QStringLiteral("headless"),
               QStringLiteral("Run for this time without a user, then leave a screenshot, "
                              "the logs and a summary; the exit status is 0 only if "
                              "data came through."),
               QStringLiteral("SECONDS")),
        Option(QStringLiteral("output"), QStringLiteral("Folder for what a headless run leaves."),
               QStringLiteral("DIR")),
        Option(QStringLiteral("plugin"), QStringLiteral("Plug-in library to load."), QStringLiteral("PATH")),
        Option(QStringLiteral("size"), QStringLiteral("Size of the window in pixels."), QStringLiteral("WxH")),
        Option(QStringLiteral("timing"), QStringLiteral("Print the time from process start to the first painted "
                                                        "window, and the memory in use then.")),
    });
}

QSize ParseSize(const QString& text)
{
    const QStringList parts = text.toLower().split(QLatin1Char('x'));
    if (parts.size() != 2) {
        return {};
    }
    bool widthGood = false;
    bool heightGood = false;
    const QSize size(parts[0].toInt(&widthGood), parts[1].toInt(&heightGood));
    const bool inRange =
        size.width() >= 200 && size.height() >= 150 && size.width() <= 16384 && size.height() <= 16384;
    return widthGood && heightGood && inRange ? size : QSize();
}

/// The text of the first value that is not what its option takes.
QString ReadValues(const QCommandLineParser& parser, HostOptions& options)
{
    const auto bad = [&parser](const QString& name) {
        return QStringLiteral("bad value for --%1: \"%2\"").arg(name, parser.value(name));
    };
    bool good = true;
    if (parser.isSet(QStringLiteral("product"))) {
        options.product = parser.value(QStringLiteral("product")).toInt(&good);
        if (!good || *options.product < 0) {
            return bad(QStringLiteral("product"));
        }
    }
    if (parser.isSet(QStringLiteral("language"))) {
        const QString name = parser.value(QStringLiteral("language"));
        if (name != QLatin1String("zh") && name != QLatin1String("en")) {
            return bad(QStringLiteral("language"));
        }
        options.language = name == QLatin1String("zh") ? 2 : 1;
    }
    if (parser.isSet(QStringLiteral("speed"))) {
        options.speed = parser.value(QStringLiteral("speed"));
        const double speed = options.speed.toDouble(&good);
        if (!good || !(speed > 0.0) || speed > 1e6) {
            return bad(QStringLiteral("speed"));
        }
    }
    if (parser.isSet(QStringLiteral("station"))) {
        options.station = parser.value(QStringLiteral("station")).toInt(&good);
        if (!good || options.station < 0 || options.station > 16) {
            return bad(QStringLiteral("station"));
        }
    }
    if (parser.isSet(QStringLiteral("headless"))) {
        options.headlessSeconds = parser.value(QStringLiteral("headless")).toInt(&good);
        if (!good || options.headlessSeconds < 1 || options.headlessSeconds > 86400) {
            return bad(QStringLiteral("headless"));
        }
    }
    if (parser.isSet(QStringLiteral("size"))) {
        options.size = ParseSize(parser.value(QStringLiteral("size")));
        if (!options.size.isValid()) {
            return bad(QStringLiteral("size"));
        }
    }
    if (parser.isSet(QStringLiteral("capture"))) {
        const QFileInfo file(parser.value(QStringLiteral("capture")));
        if (!file.isFile()) {
            return QStringLiteral("no such capture: \"%1\"").arg(file.filePath());
        }
        options.capture = file.absoluteFilePath();
    }
    return {};
}

} // namespace

HostOptionsResult ParseHostOptions(const QStringList& arguments)
{
    HostOptionsResult result;
    HostOptions& options = result.options;
    QCommandLineParser parser;
    AddOptions(parser);
    if (!parser.parse(arguments)) {
        result.error = parser.errorText();
        return result;
    }
    if (!parser.positionalArguments().isEmpty()) {
        result.error = QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst());
        return result;
    }
    options.help = parser.isSet(QStringLiteral("help"));
    options.version = parser.isSet(QStringLiteral("version"));
    options.noReceiver = parser.isSet(QStringLiteral("no-receiver"));
    options.idle = parser.isSet(QStringLiteral("idle"));
    options.timing = parser.isSet(QStringLiteral("timing"));
    options.receiver = parser.value(QStringLiteral("receiver"));
    options.port = parser.value(QStringLiteral("port"));
    options.receiverArguments = parser.values(QStringLiteral("receiver-arg"));
    options.noService = parser.isSet(QStringLiteral("no-service"));
    options.service = parser.value(QStringLiteral("service"));
    options.serviceArguments = parser.values(QStringLiteral("service-arg"));
    options.output = parser.value(QStringLiteral("output"));
    options.plugin = parser.value(QStringLiteral("plugin"));
    result.error = ReadValues(parser, options);
    return result;
}

QString HostOptionsHelp()
{
    QCommandLineParser parser;
    AddOptions(parser);
    return parser.helpText();
}
