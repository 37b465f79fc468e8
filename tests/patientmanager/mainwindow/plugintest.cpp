#include "testmain.h"

#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <QtTest>

class PluginTest : public QObject
{
    Q_OBJECT

private slots:
    void metadataIsWhatTheLoaderLooksFor()
    {
        const QJsonObject found = QPluginLoader(QStringLiteral(PM_LIBRARY)).metaData();
        QCOMPARE(found[QStringLiteral("IID")].toString(),
            QStringLiteral("org.qt-project.Qt.QGenericPluginFactoryInterface"));
        QCOMPARE(found[QStringLiteral("className")].toString(), QStringLiteral("PatientManagerPlugin"));
        QCOMPARE(found[QStringLiteral("version")].toInt() & 0xffff00, QT_VERSION & 0xffff00);
        QCOMPARE(found[QStringLiteral("debug")], QJsonValue(false));
        const QJsonObject meta = found[QStringLiteral("MetaData")].toObject();
        QCOMPARE(meta, (QJsonObject{{QStringLiteral("Keys"), QJsonArray{QStringLiteral("patientform")}}}));
    }

    void factoryMakesNothing()
    {
        QPluginLoader loader(QStringLiteral(PM_LIBRARY));
        auto *plugin = qobject_cast<QGenericPlugin *>(loader.instance());
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        QCOMPARE(plugin->create(QStringLiteral("patientform"), QString()), nullptr);
        QCOMPARE(plugin->create(QString(), QStringLiteral("anything")), nullptr);
    }
};

PM_TEST_MAIN(PluginTest)
#include "plugintest.moc"
