#include "cloudstudy.h"

#include <algorithm>

Qt::CheckState CloudStudy::check() const
{
    if (isChecked) {
        return Qt::Checked;
    }
    const bool isAny =
        std::any_of(series.begin(), series.end(), [](const CloudSeries &one) { return one.isChecked; });
    return isAny ? Qt::PartiallyChecked : Qt::Unchecked;
}

void CloudStudy::setChecked(int at, bool isOn)
{
    if (at >= 0) {
        series[at].isChecked = isOn;
        isChecked =
            std::all_of(series.begin(), series.end(), [](const CloudSeries &one) { return one.isChecked; });
        return;
    }
    isChecked = isOn;
    for (CloudSeries &one : series) {
        one.isChecked = isOn;
    }
}

QVector<CloudSeries> CloudStudy::fresh(const QVector<CloudSeries> &listed) const
{
    QVector<CloudSeries> fresh;
    for (CloudSeries one : listed) {
        const auto isSame = [&one](const CloudSeries &other) { return other.uid == one.uid; };
        if (!one.uid.isEmpty() && std::none_of(series.begin(), series.end(), isSame)
            && std::none_of(fresh.begin(), fresh.end(), isSame)) {
            one.isChecked = isChecked;
            fresh.append(one);
        }
    }
    return fresh;
}

DownloadStudy CloudStudy::wanted() const
{
    QStringList label{
        found.name.isEmpty() ? found.id : found.name, found.description, found.text(FoundStudy::Date)};
    label.removeAll(QString());
    DownloadStudy wanted{found.uid, label.join(QStringLiteral(" · ")), {}};
    for (const CloudSeries &one : series) {
        if (one.isChecked) {
            wanted.series.append({one.uid, one.images});
        }
    }
    return wanted;
}
