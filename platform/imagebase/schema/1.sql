-- Version 1: the records, the field configuration, stored inquiries and transfer counters.
--
-- FileSize, FileTime (nanoseconds) and FileInode are those of the file that was imported: SourcePath where it was
-- copied into the store, else FilePath.

CREATE TABLE patient (
    pk INTEGER PRIMARY KEY AUTOINCREMENT,
    PatientName TEXT NOT NULL DEFAULT '',
    PatientID TEXT NOT NULL DEFAULT '',
    IssuerOfPatientID TEXT NOT NULL DEFAULT '',
    PatientBirthDate TEXT NOT NULL DEFAULT '',
    PatientBirthTime TEXT,
    PatientSex TEXT,
    OtherPatientIDs TEXT,
    EthnicGroup TEXT,
    PatientSpeciesDescription TEXT,
    PatientComments TEXT,
    Status TEXT NOT NULL DEFAULT '未上传',
    updated_time TEXT NOT NULL DEFAULT (datetime('now', 'localtime')),
    NumberOfPatientRelatedStudies INTEGER NOT NULL DEFAULT 0,
    NumberOfPatientRelatedSeries INTEGER NOT NULL DEFAULT 0,
    NumberOfPatientRelatedInstances INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE generalstudy (
    pk INTEGER PRIMARY KEY AUTOINCREMENT,
    patient_fk INTEGER NOT NULL REFERENCES patient (pk) ON DELETE CASCADE,
    StudyInstanceUID TEXT NOT NULL,
    StudyID TEXT,
    StudyDate TEXT,
    StudyTime TEXT,
    AccessionNumber TEXT,
    StudyDescription TEXT,
    ReferringPhysicianName TEXT,
    PatientAge TEXT,
    PatientSize REAL,
    PatientWeight REAL,
    InstitutionName TEXT,
    InstitutionalDepartmentName TEXT,
    RequestedProcedureDescription TEXT,
    ModalitiesInStudy TEXT,
    Status TEXT NOT NULL DEFAULT '未上传',
    NumberOfStudyRelatedSeries INTEGER NOT NULL DEFAULT 0,
    NumberOfStudyRelatedInstances INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE generalseries (
    pk INTEGER PRIMARY KEY AUTOINCREMENT,
    study_fk INTEGER NOT NULL REFERENCES generalstudy (pk) ON DELETE CASCADE,
    SeriesInstanceUID TEXT NOT NULL,
    Modality TEXT,
    SeriesDescription TEXT,
    SeriesNumber INTEGER,
    SeriesDate TEXT,
    SeriesTime TEXT,
    BodyPartExamined TEXT,
    PatientPosition TEXT,
    Laterality TEXT,
    ProtocolName TEXT,
    PerformingPhysicianName TEXT,
    OperatorsName TEXT,
    Manufacturer TEXT,
    ManufacturerModelName TEXT,
    StationName TEXT,
    DeviceSerialNumber TEXT,
    SoftwareVersions TEXT,
    FrameOfReferenceUID TEXT,
    Status TEXT NOT NULL DEFAULT '未上传',
    NumberOfSeriesRelatedInstances INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE imageformat (
    pk INTEGER PRIMARY KEY AUTOINCREMENT,
    series_fk INTEGER NOT NULL REFERENCES generalseries (pk) ON DELETE CASCADE,
    SOPInstanceUID TEXT NOT NULL,
    InstanceNumber INTEGER,
    SOPClassUID TEXT,
    ImageType TEXT,
    AcquisitionNumber INTEGER,
    AcquisitionDate TEXT,
    AcquisitionTime TEXT,
    ContentDate TEXT,
    ContentTime TEXT,
    "Rows" INTEGER,
    "Columns" INTEGER,
    NumberOfFrames INTEGER,
    SamplesPerPixel INTEGER,
    PhotometricInterpretation TEXT,
    BitsAllocated INTEGER,
    BitsStored INTEGER,
    HighBit INTEGER,
    PixelRepresentation INTEGER,
    PixelSpacing TEXT,
    ImagePositionPatient TEXT,
    ImageOrientationPatient TEXT,
    SliceLocation REAL,
    SliceThickness REAL,
    SpacingBetweenSlices REAL,
    WindowCenter REAL,
    WindowWidth REAL,
    RescaleIntercept REAL,
    RescaleSlope REAL,
    TransferSyntaxUID TEXT,
    IrradiationEventUID TEXT,
    FilePath TEXT NOT NULL,
    SourcePath TEXT,
    FileSize INTEGER,
    FileTime INTEGER,
    FileInode INTEGER
);

CREATE UNIQUE INDEX patient_identity ON patient (PatientID, IssuerOfPatientID, PatientName, PatientBirthDate)
    WHERE PatientID <> '';
CREATE INDEX patient_name ON patient (PatientName);
CREATE INDEX patient_id ON patient (PatientID);
CREATE INDEX patient_birth_date ON patient (PatientBirthDate);
CREATE INDEX patient_updated_time ON patient (updated_time);
CREATE UNIQUE INDEX generalstudy_identity ON generalstudy (patient_fk, StudyInstanceUID);
CREATE INDEX generalstudy_uid ON generalstudy (StudyInstanceUID);
CREATE INDEX generalstudy_date ON generalstudy (StudyDate);
CREATE UNIQUE INDEX generalseries_identity ON generalseries (study_fk, SeriesInstanceUID);
CREATE INDEX generalseries_uid ON generalseries (SeriesInstanceUID);
CREATE UNIQUE INDEX imageformat_identity ON imageformat (SOPInstanceUID);
CREATE INDEX imageformat_series ON imageformat (series_fk, InstanceNumber);
-- Where a file came from: the question of every import, asked once a file.
CREATE INDEX imageformat_source ON imageformat (ifnull(SourcePath, FilePath));

-- Field configuration: one flag for each column of the record table, by position; the first row counts. The default
-- of a column is what the field dialog goes back to.

CREATE TABLE patientuser (
    pk INTEGER NOT NULL DEFAULT 0,
    PatientName INTEGER NOT NULL DEFAULT 1,
    PatientID INTEGER NOT NULL DEFAULT 1,
    IssuerOfPatientID INTEGER NOT NULL DEFAULT 0,
    PatientBirthDate INTEGER NOT NULL DEFAULT 1,
    PatientBirthTime INTEGER NOT NULL DEFAULT 0,
    PatientSex INTEGER NOT NULL DEFAULT 1,
    OtherPatientIDs INTEGER NOT NULL DEFAULT 0,
    EthnicGroup INTEGER NOT NULL DEFAULT 0,
    PatientSpeciesDescription INTEGER NOT NULL DEFAULT 0,
    PatientComments INTEGER NOT NULL DEFAULT 1,
    Status INTEGER NOT NULL DEFAULT 1,
    updated_time INTEGER NOT NULL DEFAULT 1,
    NumberOfPatientRelatedStudies INTEGER NOT NULL DEFAULT 1,
    NumberOfPatientRelatedSeries INTEGER NOT NULL DEFAULT 1,
    NumberOfPatientRelatedInstances INTEGER NOT NULL DEFAULT 1
);
INSERT INTO patientuser DEFAULT VALUES;

CREATE TABLE generalstudyuser (
    pk INTEGER NOT NULL DEFAULT 0,
    patient_fk INTEGER NOT NULL DEFAULT 0,
    StudyInstanceUID INTEGER NOT NULL DEFAULT 0,
    StudyID INTEGER NOT NULL DEFAULT 1,
    StudyDate INTEGER NOT NULL DEFAULT 1,
    StudyTime INTEGER NOT NULL DEFAULT 1,
    AccessionNumber INTEGER NOT NULL DEFAULT 1,
    StudyDescription INTEGER NOT NULL DEFAULT 1,
    ReferringPhysicianName INTEGER NOT NULL DEFAULT 1,
    PatientAge INTEGER NOT NULL DEFAULT 1,
    PatientSize INTEGER NOT NULL DEFAULT 0,
    PatientWeight INTEGER NOT NULL DEFAULT 0,
    InstitutionName INTEGER NOT NULL DEFAULT 1,
    InstitutionalDepartmentName INTEGER NOT NULL DEFAULT 0,
    RequestedProcedureDescription INTEGER NOT NULL DEFAULT 0,
    ModalitiesInStudy INTEGER NOT NULL DEFAULT 1,
    Status INTEGER NOT NULL DEFAULT 1,
    NumberOfStudyRelatedSeries INTEGER NOT NULL DEFAULT 1,
    NumberOfStudyRelatedInstances INTEGER NOT NULL DEFAULT 1
);
INSERT INTO generalstudyuser DEFAULT VALUES;

CREATE TABLE generalseriesuser (
    pk INTEGER NOT NULL DEFAULT 0,
    study_fk INTEGER NOT NULL DEFAULT 0,
    SeriesInstanceUID INTEGER NOT NULL DEFAULT 0,
    Modality INTEGER NOT NULL DEFAULT 1,
    SeriesDescription INTEGER NOT NULL DEFAULT 1,
    SeriesNumber INTEGER NOT NULL DEFAULT 1,
    SeriesDate INTEGER NOT NULL DEFAULT 1,
    SeriesTime INTEGER NOT NULL DEFAULT 1,
    BodyPartExamined INTEGER NOT NULL DEFAULT 1,
    PatientPosition INTEGER NOT NULL DEFAULT 0,
    Laterality INTEGER NOT NULL DEFAULT 0,
    ProtocolName INTEGER NOT NULL DEFAULT 1,
    PerformingPhysicianName INTEGER NOT NULL DEFAULT 0,
    OperatorsName INTEGER NOT NULL DEFAULT 0,
    Manufacturer INTEGER NOT NULL DEFAULT 1,
    ManufacturerModelName INTEGER NOT NULL DEFAULT 0,
    StationName INTEGER NOT NULL DEFAULT 1,
    DeviceSerialNumber INTEGER NOT NULL DEFAULT 0,
    SoftwareVersions INTEGER NOT NULL DEFAULT 0,
    FrameOfReferenceUID INTEGER NOT NULL DEFAULT 0,
    Status INTEGER NOT NULL DEFAULT 1,
    NumberOfSeriesRelatedInstances INTEGER NOT NULL DEFAULT 1
);
INSERT INTO generalseriesuser DEFAULT VALUES;

CREATE TABLE imageformatuser (
    pk INTEGER NOT NULL DEFAULT 0,
    series_fk INTEGER NOT NULL DEFAULT 0,
    SOPInstanceUID INTEGER NOT NULL DEFAULT 0,
    InstanceNumber INTEGER NOT NULL DEFAULT 1,
    SOPClassUID INTEGER NOT NULL DEFAULT 0,
    ImageType INTEGER NOT NULL DEFAULT 1,
    AcquisitionNumber INTEGER NOT NULL DEFAULT 1,
    AcquisitionDate INTEGER NOT NULL DEFAULT 0,
    AcquisitionTime INTEGER NOT NULL DEFAULT 0,
    ContentDate INTEGER NOT NULL DEFAULT 1,
    ContentTime INTEGER NOT NULL DEFAULT 1,
    "Rows" INTEGER NOT NULL DEFAULT 1,
    "Columns" INTEGER NOT NULL DEFAULT 1,
    NumberOfFrames INTEGER NOT NULL DEFAULT 1,
    SamplesPerPixel INTEGER NOT NULL DEFAULT 0,
    PhotometricInterpretation INTEGER NOT NULL DEFAULT 0,
    BitsAllocated INTEGER NOT NULL DEFAULT 0,
    BitsStored INTEGER NOT NULL DEFAULT 0,
    HighBit INTEGER NOT NULL DEFAULT 0,
    PixelRepresentation INTEGER NOT NULL DEFAULT 0,
    PixelSpacing INTEGER NOT NULL DEFAULT 0,
    ImagePositionPatient INTEGER NOT NULL DEFAULT 0,
    ImageOrientationPatient INTEGER NOT NULL DEFAULT 0,
    SliceLocation INTEGER NOT NULL DEFAULT 1,
    SliceThickness INTEGER NOT NULL DEFAULT 1,
    SpacingBetweenSlices INTEGER NOT NULL DEFAULT 0,
    WindowCenter INTEGER NOT NULL DEFAULT 0,
    WindowWidth INTEGER NOT NULL DEFAULT 0,
    RescaleIntercept INTEGER NOT NULL DEFAULT 0,
    RescaleSlope INTEGER NOT NULL DEFAULT 0,
    TransferSyntaxUID INTEGER NOT NULL DEFAULT 0,
    IrradiationEventUID INTEGER NOT NULL DEFAULT 0,
    FilePath INTEGER NOT NULL DEFAULT 1,
    SourcePath INTEGER NOT NULL DEFAULT 0,
    FileSize INTEGER NOT NULL DEFAULT 0,
    FileTime INTEGER NOT NULL DEFAULT 0,
    FileInode INTEGER NOT NULL DEFAULT 0
);
INSERT INTO imageformatuser DEFAULT VALUES;

CREATE TABLE andvancequiry (
    pk INTEGER PRIMARY KEY AUTOINCREMENT,
    UserName TEXT,
    InquiryName TEXT,
    GroupName TEXT,
    FieldName TEXT,
    Symbol TEXT,
    FieldValue TEXT,
    Logic TEXT,
    QueryType TEXT
);
CREATE INDEX andvancequiry_name ON andvancequiry (InquiryName);

CREATE TABLE series (
    seriesUID TEXT PRIMARY KEY,
    recvnum INTEGER,
    upCloudnum INTEGER
);

CREATE TABLE images (
    SOPInstanceUID TEXT PRIMARY KEY,
    seriesUID TEXT,
    Cloudflag INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX images_series ON images (seriesUID);
CREATE INDEX images_pending ON images (Cloudflag) WHERE Cloudflag = 0;

-- Counts, modalities and upload states follow every statement in its own transaction. A deletion that cascades from
-- above subtracts a whole branch at its top: further down the parents are gone already and the updates find no row.

CREATE TRIGGER imageformat_inserted AFTER INSERT ON imageformat BEGIN
    UPDATE generalseries SET NumberOfSeriesRelatedInstances = NumberOfSeriesRelatedInstances + 1,
        Status = CASE Status WHEN '已上传' THEN '未上传' ELSE Status END
        WHERE pk = NEW.series_fk;
    UPDATE generalstudy SET NumberOfStudyRelatedInstances = NumberOfStudyRelatedInstances + 1,
        Status = CASE Status WHEN '已上传' THEN '未上传' ELSE Status END
        WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = NEW.series_fk);
    UPDATE patient SET NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances + 1,
        Status = CASE Status WHEN '已上传' THEN '未上传' ELSE Status END
        WHERE pk = (SELECT patient_fk FROM generalstudy
            WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = NEW.series_fk));
    UPDATE patient SET updated_time = datetime('now', 'localtime')
        WHERE updated_time <> datetime('now', 'localtime') AND pk = (SELECT patient_fk FROM generalstudy
            WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = NEW.series_fk));
END;

CREATE TRIGGER imageformat_deleted AFTER DELETE ON imageformat BEGIN
    UPDATE patient SET NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances - 1
        WHERE pk = (SELECT patient_fk FROM generalstudy
            WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = OLD.series_fk));
    UPDATE generalstudy SET NumberOfStudyRelatedInstances = NumberOfStudyRelatedInstances - 1
        WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = OLD.series_fk);
    UPDATE generalseries SET NumberOfSeriesRelatedInstances = NumberOfSeriesRelatedInstances - 1
        WHERE pk = OLD.series_fk;
END;

CREATE TRIGGER imageformat_moved AFTER UPDATE OF series_fk ON imageformat WHEN OLD.series_fk <> NEW.series_fk BEGIN
    UPDATE patient SET NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances - 1
        WHERE pk = (SELECT patient_fk FROM generalstudy
            WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = OLD.series_fk));
    UPDATE generalstudy SET NumberOfStudyRelatedInstances = NumberOfStudyRelatedInstances - 1
        WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = OLD.series_fk);
    UPDATE generalseries SET NumberOfSeriesRelatedInstances = NumberOfSeriesRelatedInstances - 1
        WHERE pk = OLD.series_fk;
    UPDATE generalseries SET NumberOfSeriesRelatedInstances = NumberOfSeriesRelatedInstances + 1
        WHERE pk = NEW.series_fk;
    UPDATE generalstudy SET NumberOfStudyRelatedInstances = NumberOfStudyRelatedInstances + 1
        WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = NEW.series_fk);
    UPDATE patient SET NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances + 1
        WHERE pk = (SELECT patient_fk FROM generalstudy
            WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = NEW.series_fk));
END;

CREATE TRIGGER generalseries_inserted AFTER INSERT ON generalseries BEGIN
    UPDATE generalstudy SET NumberOfStudyRelatedSeries = NumberOfStudyRelatedSeries + 1,
        ModalitiesInStudy = (SELECT group_concat(Modality, '\')
        FROM (SELECT DISTINCT Modality FROM generalseries WHERE study_fk = NEW.study_fk AND Modality <> '' ORDER BY Modality))
        WHERE pk = NEW.study_fk;
    UPDATE patient SET NumberOfPatientRelatedSeries = NumberOfPatientRelatedSeries + 1
        WHERE pk = (SELECT patient_fk FROM generalstudy WHERE pk = NEW.study_fk);
END;

CREATE TRIGGER generalseries_deleting BEFORE DELETE ON generalseries BEGIN
    UPDATE patient SET NumberOfPatientRelatedSeries = NumberOfPatientRelatedSeries - 1,
        NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances - OLD.NumberOfSeriesRelatedInstances
        WHERE pk = (SELECT patient_fk FROM generalstudy WHERE pk = OLD.study_fk);
    UPDATE generalstudy SET NumberOfStudyRelatedSeries = NumberOfStudyRelatedSeries - 1,
        NumberOfStudyRelatedInstances = NumberOfStudyRelatedInstances - OLD.NumberOfSeriesRelatedInstances
        WHERE pk = OLD.study_fk;
END;

CREATE TRIGGER generalseries_deleted AFTER DELETE ON generalseries BEGIN
    UPDATE generalstudy SET ModalitiesInStudy = (SELECT group_concat(Modality, '\')
        FROM (SELECT DISTINCT Modality FROM generalseries WHERE study_fk = OLD.study_fk AND Modality <> '' ORDER BY Modality))
        WHERE pk = OLD.study_fk;
END;

CREATE TRIGGER generalseries_modality AFTER UPDATE OF Modality ON generalseries BEGIN
    UPDATE generalstudy SET ModalitiesInStudy = (SELECT group_concat(Modality, '\')
        FROM (SELECT DISTINCT Modality FROM generalseries WHERE study_fk = NEW.study_fk AND Modality <> '' ORDER BY Modality))
        WHERE pk = NEW.study_fk;
END;

CREATE TRIGGER generalseries_moved AFTER UPDATE OF study_fk ON generalseries WHEN OLD.study_fk <> NEW.study_fk BEGIN
    UPDATE patient SET NumberOfPatientRelatedSeries = NumberOfPatientRelatedSeries - 1,
        NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances - NEW.NumberOfSeriesRelatedInstances
        WHERE pk = (SELECT patient_fk FROM generalstudy WHERE pk = OLD.study_fk);
    UPDATE generalstudy SET NumberOfStudyRelatedSeries = NumberOfStudyRelatedSeries - 1,
        NumberOfStudyRelatedInstances = NumberOfStudyRelatedInstances - NEW.NumberOfSeriesRelatedInstances,
        ModalitiesInStudy = (SELECT group_concat(Modality, '\')
        FROM (SELECT DISTINCT Modality FROM generalseries WHERE study_fk = OLD.study_fk AND Modality <> '' ORDER BY Modality))
        WHERE pk = OLD.study_fk;
    UPDATE generalstudy SET NumberOfStudyRelatedSeries = NumberOfStudyRelatedSeries + 1,
        NumberOfStudyRelatedInstances = NumberOfStudyRelatedInstances + NEW.NumberOfSeriesRelatedInstances,
        ModalitiesInStudy = (SELECT group_concat(Modality, '\')
        FROM (SELECT DISTINCT Modality FROM generalseries WHERE study_fk = NEW.study_fk AND Modality <> '' ORDER BY Modality))
        WHERE pk = NEW.study_fk;
    UPDATE patient SET NumberOfPatientRelatedSeries = NumberOfPatientRelatedSeries + 1,
        NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances + NEW.NumberOfSeriesRelatedInstances
        WHERE pk = (SELECT patient_fk FROM generalstudy WHERE pk = NEW.study_fk);
END;

CREATE TRIGGER generalstudy_inserted AFTER INSERT ON generalstudy BEGIN
    UPDATE patient SET NumberOfPatientRelatedStudies = NumberOfPatientRelatedStudies + 1 WHERE pk = NEW.patient_fk;
END;

CREATE TRIGGER generalstudy_deleting BEFORE DELETE ON generalstudy BEGIN
    UPDATE patient SET NumberOfPatientRelatedStudies = NumberOfPatientRelatedStudies - 1,
        NumberOfPatientRelatedSeries = NumberOfPatientRelatedSeries - OLD.NumberOfStudyRelatedSeries,
        NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances - OLD.NumberOfStudyRelatedInstances
        WHERE pk = OLD.patient_fk;
END;

CREATE TRIGGER generalstudy_moved AFTER UPDATE OF patient_fk ON generalstudy WHEN OLD.patient_fk <> NEW.patient_fk BEGIN
    UPDATE patient SET NumberOfPatientRelatedStudies = NumberOfPatientRelatedStudies - 1,
        NumberOfPatientRelatedSeries = NumberOfPatientRelatedSeries - NEW.NumberOfStudyRelatedSeries,
        NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances - NEW.NumberOfStudyRelatedInstances
        WHERE pk = OLD.patient_fk;
    UPDATE patient SET NumberOfPatientRelatedStudies = NumberOfPatientRelatedStudies + 1,
        NumberOfPatientRelatedSeries = NumberOfPatientRelatedSeries + NEW.NumberOfStudyRelatedSeries,
        NumberOfPatientRelatedInstances = NumberOfPatientRelatedInstances + NEW.NumberOfStudyRelatedInstances
        WHERE pk = NEW.patient_fk;
END;
