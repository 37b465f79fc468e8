#include "studysearch.h"

#include "boundedanswer.h"
#include "textfold.h"
#include "webclient.h"

#include <QNetworkReply>
#include <QRegularExpression>
#include <QTimer>

namespace {

constexpr int usualPage = 100;
constexpr int largePage = 1000; ///< where all is wanted, whatever it is
constexpr int noContent = 204;
constexpr qint64 longestAnswer = qint64(32) << 20;

QString range(const QString &first, const QString &last)
{
    return first.isEmpty() && last.isEmpty() ? QString() : first + QLatin1Char('-') + last;
}

const QString anyText = QStringLiteral("*");
const QString anyCharacter = QStringLiteral("?");

/// What would have to be escaped in a query becomes a wildcard.
QString unescaped(QString value)
{
    static const QRegularExpression other(QStringLiteral("(?![A-Za-z0-9*?._-])[\\x00-\\x7f]"));
    return value.replace(other, anyCharacter);
}

/// The same for what is beyond ASCII: of any length, as archives may leave it out where they search.
QString plain(QString value)
{
    static const QRegularExpression beyondAscii(QStringLiteral("[^\\x00-\\x7f]+"));
    return unescaped(value.replace(beyondAscii, anyText));
}

/// An unescaped() text as a pattern of whole values.
QRegularExpression patternOf(const QString &text)
{
    const QString pattern = QRegularExpression::escape(text)
                                .replace(QStringLiteral("\\*"), QStringLiteral(".*"))
                                .replace(QStringLiteral("\\?"), QStringLiteral("."));
    return QRegularExpression(
        QRegularExpression::anchoredPattern(pattern), QRegularExpression::DotMatchesEverythingOption);
}

/// Any of a name's parts may be looked for, and a name is typed as it is displayed: with a comma.
QString nameKey(QString name)
{
    static const QRegularExpression comma(QStringLiteral("\\s*,\\s*"));
    return name.isEmpty() ? QString() : anyText + name.replace(comma, anyText) + anyText;
}

QString identityOf(const DicomJson &answer)
{
    for (const quint32 tag : {DicomTag::sopInstanceUid, DicomTag::seriesUid}) {
        QString uid = answer.text(tag);
        if (!uid.isEmpty()) {
            return uid;
        }
    }
    return answer.text(DicomTag::studyUid);
}

int pageOf(int most)
{
    return most > StudySearch::mostAnswers ? largePage : usualPage;
}

} // namespace

QUrlQuery StudyQuestion::query() const
{
    QUrlQuery query;
    const auto add = [&query](quint32 tag, const QString &value) {
        if (!value.isEmpty()) {
            query.addQueryItem(DicomTag::name(tag), plain(value));
        }
    };
    add(DicomTag::patientName, nameKey(patientName));
    add(DicomTag::patientId, patientId);
    add(DicomTag::studyDate, range(firstDate, lastDate));
    add(DicomTag::modalitiesInStudy, modality);
    add(DicomTag::studyUid, studyUid);
    for (const quint32 tag : {DicomTag::studyDescription, DicomTag::modalitiesInStudy,
             DicomTag::seriesInStudy, DicomTag::imagesInStudy}) {
        query.addQueryItem(QStringLiteral("includefield"), DicomTag::name(tag));
    }
    return query;
}

bool StudyQuestion::matches(const DicomJson &study) const
{
    const QString name = study.text(DicomTag::patientName);
    const QRegularExpression wantedName = patternOf(unescaped(foldedText(nameKey(patientName))));
    const QRegularExpression wantedId = patternOf(unescaped(foldedText(patientId)));
    const bool isNamed = patientName.isEmpty() || wantedName.match(foldedText(name)).hasMatch()
        || (isUnparted(patientName) && wantedName.match(joinedName(name)).hasMatch());
    return isNamed
        && (patientId.isEmpty() || wantedId.match(foldedText(study.text(DicomTag::patientId))).hasMatch());
}

StudySearch::StudySearch(
    WebClient &client, QString resource, const QUrlQuery &query, QObject *parent, int most)
    : QObject(parent)
    , m_client(client)
    , m_resource(std::move(resource))
    , m_query(query)
    , m_most(most)
{
    const WebFailure refusal = client.refusal();
    if (refusal.isNone()) {
        ask();
    } else {
        QTimer::singleShot(0, this, [this, refusal] { emit finished(refusal); });
    }
}

StudySearch::~StudySearch()
{
    if (m_reply) {
        m_reply->disconnect(this);
        delete m_reply;
    }
}

void StudySearch::abort()
{
    if (m_reply) {
        m_reply->abort();
    }
}

void StudySearch::ask()
{
    QUrlQuery page = m_query;
    page.addQueryItem(QStringLiteral("limit"), QString::number(pageOf(m_most)));
    page.addQueryItem(QStringLiteral("offset"), QString::number(m_read));
    m_reply = m_client.get(m_resource, page);
    m_reply->setParent(this);
    m_answer = new BoundedAnswer(*m_reply, longestAnswer);
    connect(m_reply, &QNetworkReply::finished, this, &StudySearch::answered);
}

void StudySearch::end(const WebFailure &failure)
{
    m_reply->deleteLater();
    m_reply.clear();
    emit finished(failure);
}

QVector<DicomJson> StudySearch::unseen(const QVector<DicomJson> &answers)
{
    QVector<DicomJson> fresh;
    for (const DicomJson &answer : answers) {
        const QString identity = identityOf(answer);
        if (!identity.isEmpty() && !m_seen.contains(identity)) {
            m_seen.insert(identity);
            fresh.append(answer);
        }
    }
    return fresh;
}

void StudySearch::answered()
{
    const QByteArray answer = m_answer->read();
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (m_answer->isTooLong()) {
        end({WebProblem::BadAnswer, {}, status});
        return;
    }
    const WebFailure failure = WebClient::failureOf(*m_reply);
    if (!failure.isNone() || status == noContent) {
        end(failure);
        return;
    }
    bool isGood = false;
    const QVector<DicomJson> answers = DicomJson::read(answer, &isGood);
    if (!isGood) {
        end({WebProblem::BadAnswer, {}, status});
        return;
    }
    const QVector<DicomJson> fresh = unseen(answers);
    if (fresh.isEmpty()) {
        end({});
        return;
    }
    m_read += answers.size();
    m_isCutShort = m_read >= m_most;
    emit found(fresh);
    if (m_isCutShort) {
        end({m_most == everything ? WebProblem::BadAnswer : WebProblem::None, {}, 0});
    } else {
        m_reply->deleteLater();
        ask();
    }
}
