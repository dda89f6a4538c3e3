// SPDX-License-Identifier: MIT
#include "base/CommandTexts.h"

#include "protocol/Constellations.h"
#include "protocol/LinkFrame.h"

#include <QCoreApplication>

namespace {

/// Translation context of the tables.
class CommandTexts {
    Q_DECLARE_TR_FUNCTIONS(CommandTexts)
};

constexpr std::size_t columns = protocol::kColumnOrder.size();

struct CommandRow {
    quint16 id;
    const char* text[columns];
};

// Those that configure have a blank: their senders put a label of their own in front. Several columns are in the
// order of protocol::kColumnOrder.
constexpr CommandRow commandTable[] = {
    {protocol::CmdStart, {QT_TRANSLATE_NOOP("CommandTexts", "启动GNSS定位"), "", "", ""}},
    {protocol::CmdStop, {QT_TRANSLATE_NOOP("CommandTexts", "关闭GNSS定位"), "", "", ""}},
    {protocol::CmdConstellations, {" ", "", "", ""}},
    {protocol::CmdStartMode, {" ", "", "", ""}},
    {protocol::CmdNmea, {" ", "", "", ""}},
    {protocol::CmdAcqLowPower, {" ", "", "", ""}},
    {protocol::CmdTrkLowPower, {" ", "", "", ""}},
    {protocol::CmdAntiJam, {" ", "", "", ""}},
    {protocol::CmdUpdateRate, {" ", "", "", ""}},
    {protocol::CmdPps, {" ", "", "", ""}},
    {protocol::CmdReports, {" ", "", "", ""}},
    {protocol::CmdFixPriority, {" ", "", "", ""}},
    {protocol::CmdInjectHistory, {QT_TRANSLATE_NOOP("CommandTexts", "注入历史信息"), "", "", ""}},
    {protocol::CmdPgnssTime, {QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS GPS时间"), "", "", ""}},
    {protocol::CmdPgnssPosition, {QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS 参考位置"), "", "", ""}},
    {protocol::CmdPgnssGpsEphemeris, {QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS GPS星历"), "", "", ""}},
    {protocol::CmdPgnssEphemeris,
     {QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS GLO星历"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS BDS星历"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS GAL星历"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS QZS星历")}},
    {protocol::CmdPgnssUtc, {QT_TRANSLATE_NOOP("CommandTexts", "PGNSS GPS UTC注入"), "", "", ""}},
    {protocol::CmdPgnssGpsIntegrity, {QT_TRANSLATE_NOOP("CommandTexts", "PGNSS GPS完好性信息注入"), "", "", ""}},
    {protocol::CmdPgnssIntegrity,
     {QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS GLO完好性信息"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS BDS完好性信息"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS GAL完好性信息"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS QZS完好性信息")}},
    {protocol::CmdPgnssIonosphere, {QT_TRANSLATE_NOOP("CommandTexts", "PGNSS GPS电离层参数注入"), "", "", ""}},
    {protocol::CmdPgnssGloChannels, {QT_TRANSLATE_NOOP("CommandTexts", "注入PGNSS GLO频点转换关系"), "", "", ""}},
    {protocol::CmdPgnssFineIonosphere, {QT_TRANSLATE_NOOP("CommandTexts", "注入高精度电离层参数"), "", "", ""}},
    {protocol::CmdAgnssGpsTime, {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GPS预测时间"), "", "", ""}},
    {protocol::CmdAgnssPosition, {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS 位置预测"), "", "", ""}},
    {protocol::CmdAgnssGpsEphemeris, {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GPS星历数据"), "", "", ""}},
    {protocol::CmdAgnssGpsIonosphere, {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GPS电离层参数"), "", "", ""}},
    {protocol::CmdAgnssUtc, {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS UTC时间"), "", "", ""}},
    {protocol::CmdAgnssGpsIntegrity, {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GPS完好性信息"), "", "", ""}},
    {protocol::CmdAgnssTime,
     {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GLO预测时间"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS BDS预测时间"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GAL预测时间"), ""}},
    {protocol::CmdAgnssIonosphere,
     {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GLO电离层参数"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS BDS电离层参数"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GAL电离层参数"), ""}},
    {protocol::CmdAgnssEphemeris,
     {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GLO星历数据"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS BDS星历数据"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GAL星历数据"), ""}},
    {protocol::CmdAgnssIntegrity,
     {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GLO完好性信息"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS BDS完好性信息"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GAL完好性信息"), ""}},
    {protocol::CmdAgnssUtcParameters,
     {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GLO UTC时间"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS BDS UTC时间"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GAL UTC时间"), ""}},
    {protocol::CmdAgnssChannels,
     {QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GLO频点对应关系"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS BDS频点对应关系"),
      QT_TRANSLATE_NOOP("CommandTexts", "注入AGNSS GAL频点对应关系"), ""}},
    {protocol::CmdUtcTime, {QT_TRANSLATE_NOOP("CommandTexts", "注入UTC时间"), "", "", ""}},
};
static_assert(sizeof(commandTable) / sizeof(commandTable[0]) == 36);

struct StateRow {
    int state;
    const char* text;
};

constexpr StateRow stateTable[] = {
    {AckStateIdle, QT_TRANSLATE_NOOP("CommandTexts", "无命令发送")},
    {AckStateSent, QT_TRANSLATE_NOOP("CommandTexts", "命令发送中")},
    {AckStateAccepted, QT_TRANSLATE_NOOP("CommandTexts", "命令发送成功")},
    {AckStateBadLength, QT_TRANSLATE_NOOP("CommandTexts", "命令长度异常")},
    {AckStateBadParameter, QT_TRANSLATE_NOOP("CommandTexts", "命令参数异常")},
    {AckStateRefused, QT_TRANSLATE_NOOP("CommandTexts", "命令错误")},
    {AckStateUnknown, QT_TRANSLATE_NOOP("CommandTexts", "未知错误")},
};

} // namespace

QString CommandText(quint16 id, quint8 column)
{
    if (column >= columns) {
        return CommandTexts::tr("未知命令!");
    }
    for (const CommandRow& row : commandTable) {
        if (row.id == id) {
            const char* text = row.text[column];
            if (*text == '\0') {
                return CommandTexts::tr("暂不支持的命令！");
            }
            return *text == ' ' ? QStringLiteral(" ") : CommandTexts::tr(text);
        }
    }
    return CommandTexts::tr("未知命令!");
}

QString AckStatusText(int status)
{
    for (const StateRow& row : stateTable) {
        if (row.state == status) {
            return CommandTexts::tr(row.text);
        }
    }
    return CommandTexts::tr("未知命令!");
}
