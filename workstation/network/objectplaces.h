#pragma once

#include "queryscu.h"
#include "retrievescu.h"

#include <QVector>

/**
 * Where in an archive objects stand that are known by their UIDs alone: an archive gives single images only
 * by their series. Asks for the images of the series of what was requested, or of all series of the study.
 *
 * @param uids of objects that the request is about
 * @return requests for exactly these, some for each series; none where the archive does not tell all places
 */
QVector<RetrieveRequest> requestsFor(
    const QStringList &uids, const RetrieveRequest &request, QueryScu &archive);
