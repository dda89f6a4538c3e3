// SPDX-License-Identifier: MIT
#include "assist/PgnssItems.h"

#include "assist/AssistRecords.h"
#include "base/StatusLog.h"
#include "bridge/ClassGnss.h"
#include "protocol/Constellations.h"
#include "protocol/LinkFrame.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>

namespace {

/// Translation context of the texts.
class PgnssItems {
    Q_DECLARE_TR_FUNCTIONS(PgnssItems)
};

using protocol::Constellation;

} // namespace

// In the order of protocol::kEphemerisOrder.
const PgnssEphemeris kEphemerides[kEphemerisCount] = {
    {{protocol::RowOf(Constellation::Gps).shortName, protocol::CmdPgnssGpsEphemeris, 0,
      "Inject gps eph fail! Fail to open file", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS GPS EPH文件 打开失败！"),
      "gps eph retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GPS星历 组包失败！"),
      QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GPS星历 ACK超时")},
     protocol::RowOf(Constellation::Gps).sceneFile,
     false},
    {{protocol::RowOf(Constellation::Glonass).shortName, protocol::CmdPgnssEphemeris,
      protocol::ColumnOf(Constellation::Glonass), "Inject glo eph fail! Fail to open file",
      QT_TRANSLATE_NOOP("PgnssItems", "PGNSS GLO EPH文件 打开失败！"),
      "glo eph retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GLO星历 组包失败！"),
      QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GLO星历 ACK超时")},
     protocol::RowOf(Constellation::Glonass).sceneFile,
     true},
    {{protocol::RowOf(Constellation::Beidou).shortName, protocol::CmdPgnssEphemeris,
      protocol::ColumnOf(Constellation::Beidou), "Inject bds eph fail! Fail to open file",
      QT_TRANSLATE_NOOP("PgnssItems", "PGNSS BDS EPH文件 打开失败！"),
      "bds eph retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入BDS星历 组包失败！"),
      QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入BDS星历 ACK超时")},
     protocol::RowOf(Constellation::Beidou).sceneFile,
     false},
    {{protocol::RowOf(Constellation::Galileo).shortName, protocol::CmdPgnssEphemeris,
      protocol::ColumnOf(Constellation::Galileo), "Inject gal eph fail! Fail to open file",
      QT_TRANSLATE_NOOP("PgnssItems", "PGNSS GAL EPH文件 打开失败！"),
      "gal eph retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GAL星历 组包失败！"),
      QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GAL星历 ACK超时")},
     protocol::RowOf(Constellation::Galileo).sceneFile,
     false},
    {{protocol::RowOf(Constellation::Qzss).shortName, protocol::CmdPgnssEphemeris,
      protocol::ColumnOf(Constellation::Qzss), "Inject qzs eph fail! Fail to open file",
      QT_TRANSLATE_NOOP("PgnssItems", "PGNSS QZS EPH文件 打开失败！"),
      "qzs eph retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入QZS星历 组包失败！"),
      QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入QZS星历 ACK超时")},
     protocol::RowOf(Constellation::Qzss).sceneFile,
     false},
};

// The mixed case in the timeout of GPS_RTI and the GLO in the texts of GAL_RTI are meant so.
const PgnssFile kDataFiles[kDataFileCount] = {
    {"GPS_UTC.dat", protocol::CmdPgnssUtc, 0, "Inject gps UTC fail! Fail to open file",
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS打开GPS UTC文件失败！"),
     "gps UTC retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GPS UTC模型组包失败！"),
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GPS UTC模型 ACK超时")},
    {"GPS_ION.dat", protocol::CmdPgnssIonosphere, 0, "Inject gps ion fail! Fail to open file",
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS打开GPS ION文件失败！"),
     "gps Ion retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GPS ION数据组包失败！"),
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GPS ION数据 ACK超时")},
    {"GPS_RTI.dat", protocol::CmdPgnssGpsIntegrity, 0, "Inject gps rti fail! Fail to open file",
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS打开GPS RTI文件失败！"),
     "gps rti retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GPS RTI数据组包失败！"),
     QT_TRANSLATE_NOOP("PgnssItems", "Pgnss注入GPS RTI数据 ACK超时")},
    {"GLO_RTI.dat", protocol::CmdPgnssIntegrity, protocol::ColumnOf(Constellation::Glonass),
     "Inject glo rti fail! Fail to open file", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS打开GLO RTI文件失败！"),
     "glo rti retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GLO RTI数据组包失败！"),
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GLO RTI数据 ACK超时")},
    {"GLO_AUX.dat", protocol::CmdPgnssGloChannels, 0, "Inject glo aux fail! Fail to open file",
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS打开GLO AUX文件失败！"),
     "glo aux retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GLO AUX数据组包失败！"),
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GLO AUX数据 ACK超时")},
    {"BDS_RTI.dat", protocol::CmdPgnssIntegrity, protocol::ColumnOf(Constellation::Beidou),
     "Inject bds rti fail! Fail to open file", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS打开BDS RTI文件失败！"),
     "bds rti retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入BDS RTI数据失败！"),
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入BDS RTI数据 ACK超时")},
    {"GAL_RTI.dat", protocol::CmdPgnssIntegrity, protocol::ColumnOf(Constellation::Galileo),
     "Inject glo rti fail! Fail to open file", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS打开GLO RTI文件失败！"),
     "glo rti retLen err: ", QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GLO RTI数据失败！"),
     QT_TRANSLATE_NOOP("PgnssItems", "PGNSS注入GLO RTI数据 ACK超时")},
};

// The text of the open failure names the GPS ephemerides; it is meant so.
const PgnssFile kFineIonosphere = {
    "ION_CUT.bin",
    protocol::CmdPgnssFineIonosphere,
    0,
    "Inject hign precision ionex fail! Fail to open file",
    QT_TRANSLATE_NOOP("PgnssItems", "PGNSS GPS EPH文件 打开失败！"),
    "cut ionex retLen err: ",
    QT_TRANSLATE_NOOP("PgnssItems", "高精度电离层 组包失败！"),
    QT_TRANSLATE_NOOP("PgnssItems", "高精度电离层 ACK超时"),
};

QString PgnssText(const char* text)
{
    return PgnssItems::tr(text);
}

InjectItem PgnssUtcItem(const QDateTime& time)
{
    InjectItem item;
    item.commandId = protocol::CmdUtcTime;
    item.payload = UtcTimeRecord(time);
    item.encodeDebug = "UTC time retLen err: ";
    item.encodeStatus = PgnssItems::tr("PGNSS注入UTC时间 组包失败！");
    item.timeoutStatus = PgnssItems::tr("PGNSS注入UTC时间 ACK超时");
    item.answerPrefix = PgnssItems::tr("PGNSS");
    return item;
}

InjectItem PgnssTimeItem(qint64 unixSeconds)
{
    InjectItem item;
    item.commandId = protocol::CmdPgnssTime;
    item.payload = ReferenceTimeRecord(unixSeconds);
    item.encodeDebug = "ref time retLen err: ";
    item.encodeStatus = PgnssItems::tr("PGNSS注入预测时间 组包失败!");
    item.timeoutStatus = PgnssItems::tr("PGNSS注入预测时间 ACK超时");
    return item;
}

InjectOutcome InjectPgnssFile(const Injector& injector, const QString& path, const PgnssFile& file)
{
    InjectItem item;
    {
        QFile content(path);
        if (!content.open(QIODevice::ReadOnly)) {
            qDebug().noquote() << file.openDebug;
            AppendStatus(PgnssText(file.openStatus));
            HighlightStatus();
            return InjectOutcome::NotOpened;
        }
        // One byte more than any frame holds makes the codec refuse a file that is too long.
        item.payload = content.read(ClassGnss::maxFrameLength + 1);
    }
    item.commandId = file.commandId;
    item.column = file.column;
    item.encodeDebug = file.encodeDebug;
    item.encodeStatus = PgnssText(file.encodeStatus);
    item.timeoutStatus = PgnssText(file.timeoutStatus);
    return injector.Run(item);
}
