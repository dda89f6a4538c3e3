// SPDX-License-Identifier: MIT
#include "production/FirmwareAnswer.h"

#include <algorithm>

bool IsAcceptedAnswer(const QByteArray& answer)
{
    return !answer.isEmpty() &&
           std::all_of(answer.begin(), answer.end(), [](char c) { return c == 'C' || c == 'G' || c == 0x06; });
}

QString AnswerAsHex(const QByteArray& answer)
{
    return QString::fromLatin1(answer.toHex(' ').toUpper());
}

QString VersionText(const QByteArray& reply)
{
    if (reply.isEmpty()) {
        return QString(QChar(0));
    }
    const int size = std::min(reply.size(), kLongestVersionReply);
    QByteArray text = reply.left(size);
    // The printable characters of ASCII, whatever the user's locale takes for printable.
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < 0x20 || c > 0x7E; }, '.');
    const int start = text.indexOf('$');
    if (start < 0) {
        return {};
    }
    // The search for the '*' stops two before the end, also when it is the beginning already.
    int star = 0;
    while (star < size - 2 && text.at(star) != '*') {
        ++star;
    }
    const int end = star + 2 < size ? star + 2 : star;
    return end < start ? QString() : QString::fromLatin1(text.mid(start, end - start + 1));
}
