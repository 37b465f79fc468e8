#include "picturebench.h"

#include "imageview.h"
#include "measurement.h"
#include "previewwindow.h"
#include "thumbnailloader.h"
#include "thumbnailmodel.h"
#include "thumbnailstore.h"
#include "thumbnailview.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QListView>
#include <QSqlQuery>
#include <QtTest>

#include <algorithm>

namespace {

constexpr int mostWaitMs = 60'000;

QJsonObject summary(const std::vector<double> &values)
{
    QJsonArray all;
    std::copy(values.begin(), values.end(), std::back_inserter(all));
    return {{QStringLiteral("median"), Measurement::median(values)}, {QStringLiteral("all"), all}};
}

double msOf(const QElapsedTimer &time)
{
    return double(time.nsecsElapsed()) / 1e6;
}

QList<qlonglong> keys(const QString &sql)
{
    QList<qlonglong> found;
    QSqlQuery query(sql);
    while (query.next()) {
        found.append(query.value(0).toLongLong());
    }
    return found;
}

} // namespace

PictureBench::PictureBench(QString indexPath, int rounds)
    : m_index(std::move(indexPath))
    , m_rounds(rounds)
{ }

PictureBench::Turns PictureBench::turn(const std::function<void()> &begin, const std::function<bool()> &done)
{
    Turns turns;
    QElapsedTimer total;
    QElapsedTimer one;
    total.start();
    one.start();
    begin();
    turns.longestMs = msOf(one);
    while (!done()) {
        if (total.elapsed() > mostWaitMs) {
            qFatal("what was asked for does not come");
        }
        // What waits for workers is no block: events are looked at, not waited for.
        one.start();
        QCoreApplication::processEvents();
        turns.longestMs = std::max(turns.longestMs, msOf(one));
    }
    turns.totalMs = msOf(total);
    return turns;
}

void PictureBench::thumbnails(QJsonObject &result)
{
    const RecordKeys patient{RecordLevel::Patient, keys(QStringLiteral("SELECT min(pk) FROM patient"))};
    std::vector<double> first;
    std::vector<double> all;
    std::vector<double> again;
    std::vector<double> blocks;
    for (int round = 0; round < m_rounds; ++round) {
        QDir(ThumbnailStore(m_index).folder()).removeRecursively();
        ThumbnailView view(m_index);
        view.resize(420, 900);
        view.show();
        if (!QTest::qWaitForWindowExposed(&view)) {
            qFatal("no window");
        }
        int shown = 0;
        bool finished = false;
        QObject::connect(view.loader(), &ThumbnailLoader::loaded, &view, [&] {
            view.list()->viewport()->repaint();
            ++shown;
        });
        QObject::connect(view.loader(), &ThumbnailLoader::finished, &view, [&] { finished = true; });
        const Turns one = turn([&] { view.show(patient); }, [&] { return shown > 0; });
        const Turns rest = turn([] {}, [&] { return finished; });
        first.push_back(one.totalMs);
        all.push_back(one.totalMs + rest.totalMs);
        finished = false;
        const Turns second = turn([&] { view.show(patient); }, [&] { return finished; });
        again.push_back(second.totalMs);
        blocks.push_back(std::max({one.longestMs, rest.longestMs, second.longestMs}));
        result.insert(QStringLiteral("pictures"), view.model()->rowCount());
    }
    result.insert(QStringLiteral("firstMs"), summary(first));
    result.insert(QStringLiteral("allMs"), summary(all));
    result.insert(QStringLiteral("cachedMs"), summary(again));
    result.insert(QStringLiteral("thumbnailBlockMs"), summary(blocks));
}

/// Leaves the patient at its first picture for one of its series: what is decoded from then on, but for that
/// series and what each thread was at, was decoded in vain.
void PictureBench::leftSelection(QJsonObject &result)
{
    const RecordKeys patient{RecordLevel::Patient, keys(QStringLiteral("SELECT min(pk) FROM patient"))};
    const RecordKeys series{RecordLevel::Series, keys(QStringLiteral("SELECT max(pk) FROM generalseries"))};
    int inVain = 0;
    for (int round = 0; round < m_rounds; ++round) {
        QDir(ThumbnailStore(m_index).folder()).removeRecursively();
        ThumbnailLoader loader(m_index);
        int started = -1;
        bool finished = false;
        QObject::connect(&loader, &ThumbnailLoader::loaded, &loader, [&] {
            if (started < 0) {
                loader.load(series);
                started = loader.decodedCount();
            }
        });
        QObject::connect(&loader, &ThumbnailLoader::finished, &loader, [&] { finished = true; });
        turn([&] { loader.load(patient); }, [&] { return finished; });
        inVain = std::max(inVain, loader.decodedCount() - started - 1);
    }
    result.insert(QStringLiteral("decodedInVain"), inVain);
}

void PictureBench::scrolling(QJsonObject &result)
{
    const qlonglong series = keys(QStringLiteral("SELECT min(pk) FROM generalseries")).value(0);
    std::vector<double> rates;
    std::vector<double> blocks;
    double opening = 0;
    for (int round = 0; round < m_rounds; ++round) {
        PreviewWindow preview;
        preview.show();
        if (!QTest::qWaitForWindowExposed(&preview)) {
            qFatal("no window");
        }
        const auto isPainted = [&](int index) { return [&, index] { return preview.shown() == index; }; };
        const Turns open = turn([&] { preview.showSeries(m_index, series); }, isPainted(0));
        opening = std::max(opening, open.totalMs);
        double longest = 0;
        QElapsedTimer time;
        time.start();
        for (int index = 1; index < preview.count(); ++index) {
            const int paints = preview.view()->paintCount();
            const Turns step = turn([&] { preview.goTo(index); },
                [&] { return preview.shown() == index && preview.view()->paintCount() > paints; });
            longest = std::max(longest, step.longestMs);
        }
        blocks.push_back(longest);
        rates.push_back((preview.count() - 1) * 1000.0 / msOf(time));
        result.insert(QStringLiteral("images"), preview.count());
    }
    result.insert(QStringLiteral("imagesPerSecond"), summary(rates));
    result.insert(QStringLiteral("openMs"), opening);
    result.insert(QStringLiteral("scrollBlockMs"), summary(blocks));
}

QJsonObject PictureBench::run()
{
    QJsonObject result;
    thumbnails(result);
    leftSelection(result);
    scrolling(result);
    return result;
}
