#pragma once

#include "vector3.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QVector>

/// The identity that all files of one person share. Texts are Unicode; characterSet says how files hold them.
struct SamplePatient
{
    QString folder;
    QString name;
    QString id;
    QString birthDate;
    QString sex;
    QString comments;
    QByteArray characterSet; ///< value of Specific Character Set
    QByteArray codec; ///< the same, as text codecs are called
};

struct SampleStudy
{
    QString date;
    QString time;
    QString id;
    QString accession;
    QString description;
    QString referringPhysician;
    QString institution;
    QString age;
    QString weight;
};

/// Which picture a series shows.
enum class SamplePicture { HeadCt, HeadT1, HeadT2, TrunkCt, KneePd, SpineT2, ChestX, Doppler };

/// How the slices of a series lie in the patient.
struct SampleGeometry
{
    Vector3 centre; ///< middle of the middle slice
    Vector3 row; ///< direction in which columns count up
    Vector3 column; ///< direction in which rows count up
    float spacing = 1; ///< of pixels
    float gap = 5; ///< between slices
};

struct SampleSeries
{
    SamplePicture picture;
    QString description;
    QString protocol;
    QString bodyPart;
    int slices = 10;
    SampleGeometry geometry;
    float windowCentre = 40;
    float windowWidth = 400;
    float contrast = 0; ///< what a contrast medium adds to vessels and organs
};
