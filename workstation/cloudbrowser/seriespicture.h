#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QTemporaryDir>

#include <functional>
#include <memory>

class ObjectsRetrieve;
class QNetworkReply;
class WebClient;

/**
 * One picture for a series of a service: rendered there, or, where the service does not render, of one object
 * that is fetched and rendered here. Deletes itself when it has told, or could not. GUI thread; decoding is
 * on a pool's.
 */
class SeriesPicture : public QObject
{
    Q_OBJECT

public:
    /// @param client outlives this
    /// @param series its resource, as "studies/1.2/series/1.2.3"
    SeriesPicture(WebClient &client, QString series, int side, QObject *parent);
    ~SeriesPicture() override;

    /// A JPEG of others, no larger than a square; null where it is none or a hostile one.
    static QImage readPicture(const QByteArray &bytes, int side);
    /// The first picture of a file; null where it has none.
    static QImage pictureOf(const QString &path, int side);

signals:
    void made(const QImage &picture);

private:
    void await(QNetworkReply *asked, qint64 most,
        const std::function<void(bool isGood, const QByteArray &answer)> &then);
    void askForInstance();
    void askForPicture(const QString &instanceUid);
    void fetchObject();
    void make(const std::function<QImage()> &work, const std::function<void(const QImage &)> &then);
    void give(const QImage &picture);

    WebClient &m_client;
    const QString m_series;
    const int m_side;
    QString m_instance; ///< its resource
    QPointer<QNetworkReply> m_reply;
    std::shared_ptr<QTemporaryDir> m_folder; ///< also of who decodes
};
