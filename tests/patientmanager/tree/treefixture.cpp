#include "treefixture.h"

#include <QPushButton>
#include <QtTest>

#include <algorithm>

QString text(const QList<qlonglong> &keys)
{
    QStringList parts;
    for (const qlonglong key : keys) {
        parts.append(QString::number(key));
    }
    std::sort(parts.begin(), parts.end());
    return parts.join(QLatin1Char(','));
}

Log::Log(PatientTreeForm *form)
{
    const auto keys = [this, form](auto signal, const char *name) {
        QObject::connect(form, signal, form, [this, name](const QList<qlonglong> &pks, const QString &table) {
            add(name, text(pks) + QLatin1Char('|') + table);
        });
    };
    const auto word = [this, form](auto signal, const char *name) {
        QObject::connect(form, signal, form, [this, name](const QString &value) { add(name, value); });
    };
    keys(&PatientTreeForm::selectPatientPks, "patients");
    keys(&PatientTreeForm::selectStudyPks, "studies");
    keys(&PatientTreeForm::selectSeriesPks, "series");
    keys(&PatientTreeForm::selectSeriesPk, "one series");
    keys(&PatientTreeForm::selectMutiPK, "multiple");
    word(&PatientTreeForm::selectInstancesFilter, "filter");
    word(&PatientTreeForm::selectTable, "table");
    word(&PatientTreeForm::tableInfo, "info");
    QObject::connect(form, &PatientTreeForm::deleteThumbView, form, [this] { add("thumbnails", {}); });
}

void Log::add(const char *name, const QString &value)
{
    m_lines.append(QStringLiteral("%1: %2").arg(QLatin1String(name), value));
}

void TreeFixture::init()
{
    index.emplace();
    index->query(QStringLiteral("DELETE FROM andvancequiry"));
    patient = index->addPatient(QStringLiteral("A^One"), QStringLiteral("1"));
    index->addPatient(QStringLiteral("B^Two"), QStringLiteral("2"));
    study = index->addStudy(patient, QStringLiteral("1.1"));
    index->addStudy(patient + 1, QStringLiteral("2.1"));
    index->addSeries(study, QStringLiteral("1.1.1"), QStringLiteral("CT"), 1);
    index->addSeries(study, QStringLiteral("1.1.2"), QStringLiteral("MR"), 2);
    // Keys of the levels differ, so that none passes for another.
    index->query(QStringLiteral("UPDATE generalseries SET pk = pk + 20"));
    series = index->query(QStringLiteral("SELECT min(pk) FROM generalseries")).toLongLong();
    store(all, QStringLiteral("patient"), QStringLiteral("pk"), QStringLiteral("0"), QStringLiteral("and"),
        QStringLiteral(">"));
}

void TreeFixture::cleanup()
{
    form.reset();
    log.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    index.reset();
}

void TreeFixture::store(const QString &name, const QString &group, const QString &field, const QString &value,
    const QString &logic, const QString &symbol) const
{
    index->query(
        QStringLiteral("INSERT INTO andvancequiry (UserName, InquiryName, GroupName, FieldName, Symbol, "
                       "FieldValue, Logic, QueryType) VALUES ('super', ?, ?, ?, ?, ?, ?, 'Precise')"),
        {name, group, field, symbol, value, logic});
}

PatientTreeForm &TreeFixture::open()
{
    form = std::make_unique<PatientTreeForm>(nullptr);
    log = std::make_unique<Log>(form.get());
    form->show();
    return *form;
}

void TreeFixture::press(const char *button) const
{
    QTest::mouseClick(form->findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
}

QModelIndex TreeFixture::row(const QList<int> &path) const
{
    QModelIndex place;
    for (const int step : path) {
        place = view()->model()->index(step, 0, place);
    }
    return place;
}
