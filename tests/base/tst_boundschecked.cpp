// SPDX-License-Identifier: MIT
#include "base/BoundsChecked.h"

#include <QtTest>

#include <cstdarg>

namespace {

__attribute__((format(printf, 4, 5))) int Format(char* out, std::size_t size, std::size_t count,
                                                 const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf_s(out, size, count, format, arguments);
    va_end(arguments);
    return length;
}

} // namespace

class TestBoundsChecked : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void CopiesWithinBounds()
    {
        QByteArray out(8, '#');
        const auto fresh = [&] { return out.fill('#').data(); };
        QCOMPARE(memcpy_s(fresh(), 4, "abcd", 4), 0);
        QCOMPARE(out, QByteArray("abcd####"));
        QVERIFY(memcpy_s(fresh(), 4, "abcdef", 5) != 0);
        QCOMPARE(out, QByteArray("\0\0\0\0####", 8));
        QVERIFY(memcpy_s(nullptr, 4, "a", 1) != 0);
        QVERIFY(memcpy_s(fresh(), 8, nullptr, 1) != 0);
        QCOMPARE(memcpy_s(nullptr, 0, nullptr, 0), 0);
        QVERIFY(memset_s(fresh(), 4, 'x', 6) != 0);
        QCOMPARE(out, QByteArray("xxxx####"));
        QCOMPARE(strcpy_s(fresh(), 4, "abc"), 0);
        QCOMPARE(out, QByteArray("abc\0####", 8));
        QVERIFY(strcpy_s(out.data(), 4, "abcd") != 0);
        QCOMPARE(out, QByteArray("\0bc\0####", 8));
    }

    void FormatsWithoutWouldBeLengths()
    {
        char out[8] = {'#', '#', '#', '#', '#', '#', '#', '#'};
        QCOMPARE(sprintf_s(out, 4, "%d", 123), 3);
        QCOMPARE(sprintf_s(out, 4, "%d", 1234), -1);
        QVERIFY(out[0] == '\0' && out[4] == '#');

        // A count below the buffer cuts and tells what was written; one beyond it is an error.
        QCOMPARE(Format(out, 8, 3, "%s", "abcdef"), 3);
        QCOMPARE(QByteArray(out), QByteArray("abc"));
        QCOMPARE(Format(out, 8, 7, "%s", "abcdefghij"), 7);
        QCOMPARE(QByteArray(out), QByteArray("abcdefg"));
        QCOMPARE(Format(out, 4, 100, "%s", "abcdef"), -1);
        QCOMPARE(out[0], '\0');
        QCOMPARE(Format(out, 4, 100, "%s", "abc"), 3);
        QCOMPARE(Format(nullptr, 4, 3, "%s", "abc"), -1);
    }
};

QTEST_GUILESS_MAIN(TestBoundsChecked)
#include "tst_boundschecked.moc"
