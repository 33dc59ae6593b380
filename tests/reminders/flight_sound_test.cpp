#include <QByteArray>
#include <QFile>
#include <QtEndian>
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

namespace orva {
namespace {

// The shipped sound as the speakers will read it: chunks of a RIFF file.
struct Wav {
    QByteArray bytes;
    QByteArray fmt;
    qsizetype data_size = -1;

    explicit Wav(const QString& path) {
        QFile f(path);
        if (f.open(QIODevice::ReadOnly)) bytes = f.readAll();
        for (qsizetype at = 12; at + 8 <= bytes.size();) {
            const QByteArray id = bytes.mid(at, 4);
            const quint32 size = u32(at + 4);
            if (id == "fmt ") fmt = bytes.mid(at + 8, size);
            if (id == "data") data_size = size;
            at += 8 + size + (size & 1);
        }
    }
    quint32 u32(qsizetype at) const { return qFromLittleEndian<quint32>(bytes.constData() + at); }
    quint16 fmt16(qsizetype at) const { return qFromLittleEndian<quint16>(fmt.constData() + at); }
    quint32 fmt32(qsizetype at) const { return qFromLittleEndian<quint32>(fmt.constData() + at); }
};

TEST(FlightSound, ShipsAsMonoSixteenBitPcmAt22050HzOfAFewSeconds) {
    const Wav w(QStringLiteral(ORVACAL_SOURCE_DATA_DIR "/airp-tdc10.wav"));
    ASSERT_GE(w.bytes.size(), 44);
    EXPECT_EQ(w.bytes.left(4), QByteArray("RIFF"));
    EXPECT_EQ(w.bytes.mid(8, 4), QByteArray("WAVE"));
    EXPECT_EQ(w.u32(4), quint32(w.bytes.size() - 8));
    ASSERT_GE(w.fmt.size(), 16);
    EXPECT_EQ(w.fmt16(0), 1);          // PCM
    EXPECT_EQ(w.fmt16(2), 1);          // mono
    EXPECT_EQ(w.fmt32(4), 22050u);     // samples per second
    EXPECT_EQ(w.fmt32(8), 22050u * 2); // bytes per second
    EXPECT_EQ(w.fmt16(12), 2);         // bytes per sample
    EXPECT_EQ(w.fmt16(14), 16);        // bits per sample
    ASSERT_GT(w.data_size, 0);
    const double seconds = double(w.data_size) / (22050 * 2);
    EXPECT_GE(seconds, 1.5);
    EXPECT_LE(seconds, 4.0);
    EXPECT_LT(w.bytes.size(), 150 * 1024);
}

TEST(FlightSound, IsHeardAndFadesInAndOut) {
    const Wav w(QStringLiteral(ORVACAL_SOURCE_DATA_DIR "/airp-tdc10.wav"));
    ASSERT_GT(w.data_size, 44100);
    const qsizetype start = w.bytes.indexOf("data") + 8;
    const auto sample = [&](qsizetype i) {
        return qFromLittleEndian<qint16>(w.bytes.constData() + start + 2 * i);
    };
    const qsizetype n = w.data_size / 2;
    int loudest = 0;
    for (qsizetype i = 0; i < n; ++i)
        loudest = std::max(loudest, std::abs(int(sample(i))));
    EXPECT_GT(loudest, 16000);
    // The first and last samples are near silence: no click at either end.
    EXPECT_LT(std::abs(int(sample(0))), 500);
    EXPECT_LT(std::abs(int(sample(n - 1))), 500);
}

} // namespace
} // namespace orva
