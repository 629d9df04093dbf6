#include "tests/video/RenderedVideo.h"

#include "tests/platform/sound/Program.h"
#include "tests/platform/sound/SoundFiles.h"

#include <QtEndian>

#include <numeric>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

QByteArray floatWav(const std::vector<float>& samples, int rate, int channels)
{
    return wav(floatBytes(samples), rate, channels, 32, WavKind::Float);
}

QStringList streamEntries(const QString& path, const QString& stream, const QString& entries)
{
    const Outcome told =
        run(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-select_streams"_s, stream, u"-count_packets"_s, u"-show_entries"_s,
                           u"stream="_s + entries, u"-of"_s, u"default=nokey=1:noprint_wrappers=1"_s, path});
    return QString::fromUtf8(told.output).split(u'\n', Qt::SkipEmptyParts);
}

double streamSeconds(const QString& path, const QString& stream)
{
    return streamEntries(path, stream, u"duration"_s).value(0).toDouble();
}

std::vector<double> keyFrameTimes(const QString& path)
{
    const Outcome told = run(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-select_streams"_s, u"v:0"_s, u"-show_entries"_s,
                                            u"packet=pts_time,flags"_s, u"-of"_s, u"csv=p=0"_s, path});
    std::vector<double> times;
    for (const QByteArray& line : told.output.split('\n')) {
        const QList<QByteArray> fields = line.split(',');
        if (fields.size() > 1 && fields[1].startsWith('K'))
            times.push_back(fields[0].toDouble());
    }
    return times;
}

bool decodesWhole(const QString& path)
{
    const Outcome told =
        run(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-xerror"_s, u"-i"_s, path, u"-f"_s, u"null"_s, u"-"_s});
    return told.exitCode == 0 && told.errors.isEmpty();
}

bool decodesFrom(const QString& path, double seconds)
{
    const Outcome told =
        run(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-xerror"_s, u"-ss"_s, QString::number(seconds), u"-i"_s, path,
                          u"-frames:v"_s, u"2"_s, u"-t"_s, u"0.1"_s, u"-f"_s, u"framecrc"_s, u"-"_s});
    return told.exitCode == 0 && told.errors.isEmpty() && told.output.contains("\n0,");
}

QStringList boxes(const QByteArray& file)
{
    QStringList names;
    for (qsizetype start = 0; start + 8 <= file.size();) {
        names << QString::fromLatin1(file.mid(start + 4, 4));
        const auto size = qsizetype(qFromBigEndian<quint32>(file.constData() + start));
        if (size < 8)
            break;
        start += size;
    }
    return names;
}

std::vector<double> brightness(const QString& path, const QRect& part)
{
    const QString crop = u"crop=%1:%2:%3:%4"_s.arg(part.width()).arg(part.height()).arg(part.left()).arg(part.top());
    const Outcome told =
        run(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, path, u"-vf"_s, crop + u",scale=8:8:flags=area"_s,
                          u"-pix_fmt"_s, u"gray"_s, u"-f"_s, u"rawvideo"_s, u"-"_s});
    constexpr qsizetype pixels = 64;
    std::vector<double> means;
    for (qsizetype start = 0; start + pixels <= told.output.size(); start += pixels) {
        const auto* first = reinterpret_cast<const unsigned char*>(told.output.constData()) + start;
        means.push_back(std::accumulate(first, first + pixels, 0.0) / double(pixels));
    }
    return means;
}

} // namespace orvane::test
