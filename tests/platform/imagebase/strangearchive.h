#pragma once

#include <QByteArray>
#include <QVector>
#include <QtGlobal>

#include <functional>
#include <thread>

struct T_ASC_Association;
struct T_ASC_Network;
struct T_DIMSE_C_FindRQ;
class DcmDataset;

/// A peer that takes one association after the other, and one query over each, and answers as a test wants:
/// not as an archive should.
class StrangeArchive
{
public:
    /// What a script does with the query that has come.
    class Query
    {
    public:
        Query(T_ASC_Association *association, int context, const T_DIMSE_C_FindRQ &request)
            : m_association(association)
            , m_context(context)
            , m_request(request)
        { }
        /// @return whether anybody took it
        bool answer(quint16 status, DcmDataset *data) const;
        /// Answers a request of another kind.
        bool answerAsEcho() const;
        /// Cuts the line.
        void leave() const;

    private:
        T_ASC_Association *const m_association;
        const int m_context;
        const T_DIMSE_C_FindRQ &m_request;
    };
    static constexpr char studyRoot[] = "1.2.840.10008.5.1.4.1.2.2.1";
    static constexpr char patientRoot[] = "1.2.840.10008.5.1.4.1.2.1.1";
    using Script = std::function<void(const Query &query)>;

    /// @param models that it has @param associations that it takes
    StrangeArchive(
        quint16 port, Script script, const QVector<QByteArray> &models = {studyRoot}, int associations = 1);
    /// Waits for the end of the associations.
    ~StrangeArchive();
    StrangeArchive(const StrangeArchive &) = delete;
    StrangeArchive &operator=(const StrangeArchive &) = delete;

private:
    void serve();

    const Script m_script;
    const QVector<QByteArray> m_models;
    const int m_associations;
    T_ASC_Network *m_network = nullptr;
    std::thread m_thread;
};
