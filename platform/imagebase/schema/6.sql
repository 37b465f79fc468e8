-- Version 6: uploads and downloads that are not at their end, and transfer counters that follow what they count.
--
-- An upload's files: State 0 waits, 2 was stored by the service, 3 has failed; Fault and Reason say why. What is on its
-- way waits, so that a kill leaves it waiting. Version is what the index said of the file when it was sent. The counts
-- of a task are derived from its files.

CREATE TABLE uploadtask (
    pk INTEGER PRIMARY KEY,
    Service TEXT NOT NULL,
    PatientName TEXT NOT NULL DEFAULT '',
    SeriesUIDs TEXT NOT NULL DEFAULT '',
    Files INTEGER NOT NULL DEFAULT 0,
    Stored INTEGER NOT NULL DEFAULT 0,
    Failed INTEGER NOT NULL DEFAULT 0,
    Bytes INTEGER NOT NULL DEFAULT 0,
    BytesStored INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE uploadfile (
    pk INTEGER PRIMARY KEY,
    task_fk INTEGER NOT NULL REFERENCES uploadtask (pk) ON DELETE CASCADE,
    FilePath TEXT NOT NULL,
    SOPInstanceUID TEXT,
    SeriesInstanceUID TEXT,
    Bytes INTEGER NOT NULL DEFAULT 0,
    State INTEGER NOT NULL DEFAULT 0,
    Fault INTEGER NOT NULL DEFAULT 0,
    Reason INTEGER NOT NULL DEFAULT 0,
    Problem INTEGER NOT NULL DEFAULT 0,
    Detail TEXT,
    Tries INTEGER NOT NULL DEFAULT 0,
    Version TEXT
);
CREATE INDEX uploadfile_queue ON uploadfile (task_fk, State);
CREATE INDEX uploadfile_instance ON uploadfile (SOPInstanceUID);
CREATE INDEX uploadfile_waiting ON uploadfile (SeriesInstanceUID) WHERE State = 0;

CREATE TABLE downloadstudy (
    studyUID TEXT PRIMARY KEY,
    service TEXT NOT NULL DEFAULT '',
    label TEXT,
    state INTEGER NOT NULL DEFAULT 0
);

CREATE TABLE downloadseries (
    studyUID TEXT NOT NULL REFERENCES downloadstudy (studyUID) ON DELETE CASCADE,
    seriesUID TEXT NOT NULL,
    state INTEGER NOT NULL DEFAULT 0,
    expected INTEGER,
    received INTEGER NOT NULL DEFAULT 0,
    reason INTEGER NOT NULL DEFAULT 0,
    PRIMARY KEY (studyUID, seriesUID)
);

CREATE TRIGGER uploadfile_inserted AFTER INSERT ON uploadfile BEGIN
    UPDATE uploadtask SET Files = Files + 1, Bytes = Bytes + NEW.Bytes WHERE pk = NEW.task_fk;
    UPDATE series SET upCloudnum = 0 WHERE seriesUID = NEW.SeriesInstanceUID AND upCloudnum IS NULL;
END;

CREATE TRIGGER uploadfile_went_on AFTER UPDATE OF State ON uploadfile WHEN NEW.State <> OLD.State BEGIN
    UPDATE uploadtask SET Stored = Stored + (NEW.State = 2) - (OLD.State = 2),
        Failed = Failed + (NEW.State = 3) - (OLD.State = 3),
        BytesStored = BytesStored + NEW.Bytes * (NEW.State = 2) - OLD.Bytes * (OLD.State = 2)
        WHERE pk = NEW.task_fk;
END;

CREATE TRIGGER uploadfile_waits_again AFTER UPDATE OF State ON uploadfile WHEN NEW.State = 0 AND OLD.State <> 0 BEGIN
    UPDATE series SET upCloudnum = 0 WHERE seriesUID = NEW.SeriesInstanceUID AND upCloudnum IS NULL;
END;

-- A series of which nothing was stored and nothing waits is as one that was never uploaded.

CREATE TRIGGER uploadfile_failed AFTER UPDATE OF State ON uploadfile WHEN NEW.State = 3 AND OLD.State = 0 BEGIN
    UPDATE series SET upCloudnum = NULL WHERE seriesUID = NEW.SeriesInstanceUID AND upCloudnum = 0
        AND NOT EXISTS (SELECT 1 FROM uploadfile WHERE SeriesInstanceUID = NEW.SeriesInstanceUID AND State = 0);
END;

CREATE TRIGGER uploadfile_deleted AFTER DELETE ON uploadfile WHEN OLD.State = 0 BEGIN
    UPDATE series SET upCloudnum = NULL WHERE seriesUID = OLD.SeriesInstanceUID AND upCloudnum = 0
        AND NOT EXISTS (SELECT 1 FROM uploadfile WHERE SeriesInstanceUID = OLD.SeriesInstanceUID AND State = 0);
END;

CREATE TRIGGER series_not_uploaded AFTER UPDATE OF upCloudnum ON series
    WHEN NEW.upCloudnum IS NULL AND OLD.upCloudnum IS NOT NULL BEGIN
    UPDATE generalseries SET Status = '未上传' WHERE SeriesInstanceUID = NEW.seriesUID AND Status <> '未上传';
    UPDATE patient SET Status = '未上传' WHERE Status <> '未上传' AND pk IN (SELECT patient_fk FROM generalstudy
            WHERE pk IN (SELECT study_fk FROM generalseries WHERE SeriesInstanceUID = NEW.seriesUID))
        AND NOT EXISTS (SELECT 1 FROM generalstudy JOIN generalseries ON generalseries.study_fk = generalstudy.pk
            WHERE generalstudy.patient_fk = patient.pk AND generalseries.Status <> '未上传');
    UPDATE generalstudy SET Status = '未上传' WHERE Status <> '未上传' AND patient_fk IN (SELECT pk FROM patient
        WHERE Status = '未上传' AND pk IN (SELECT patient_fk FROM generalstudy
            WHERE pk IN (SELECT study_fk FROM generalseries WHERE SeriesInstanceUID = NEW.seriesUID)));
END;

-- upCloudnum counts the images with a flag. What falls to none and waits for nothing is not being uploaded.

CREATE TRIGGER images_inserted AFTER INSERT ON images WHEN NEW.Cloudflag <> 0 BEGIN
    UPDATE series SET upCloudnum = ifnull(upCloudnum, 0) + 1 WHERE seriesUID = NEW.seriesUID;
END;

CREATE TRIGGER images_flagged AFTER UPDATE OF Cloudflag ON images WHEN NEW.Cloudflag <> 0 AND OLD.Cloudflag = 0 BEGIN
    UPDATE series SET upCloudnum = ifnull(upCloudnum, 0) + 1 WHERE seriesUID = NEW.seriesUID;
END;

CREATE TRIGGER images_unflagged AFTER UPDATE OF Cloudflag ON images WHEN NEW.Cloudflag = 0 AND OLD.Cloudflag <> 0 BEGIN
    UPDATE generalseries SET Status = '未上传' WHERE SeriesInstanceUID = NEW.seriesUID AND Status = '已上传';
    UPDATE patient SET Status = '未上传' WHERE Status = '已上传' AND pk IN (SELECT patient_fk FROM generalstudy
        WHERE pk IN (SELECT study_fk FROM generalseries WHERE SeriesInstanceUID = NEW.seriesUID));
    UPDATE generalstudy SET Status = '未上传' WHERE Status = '已上传'
        AND pk IN (SELECT study_fk FROM generalseries WHERE SeriesInstanceUID = NEW.seriesUID);
    UPDATE series SET upCloudnum = CASE WHEN upCloudnum > 1 OR EXISTS (SELECT 1 FROM uploadfile
            WHERE SeriesInstanceUID = NEW.seriesUID AND State = 0) THEN upCloudnum - 1 END
        WHERE seriesUID = NEW.seriesUID AND upCloudnum > 0;
END;

CREATE TRIGGER images_deleted AFTER DELETE ON images WHEN OLD.Cloudflag <> 0 BEGIN
    UPDATE series SET upCloudnum = CASE WHEN upCloudnum > 1 OR EXISTS (SELECT 1 FROM uploadfile
            WHERE SeriesInstanceUID = OLD.seriesUID AND State = 0) THEN upCloudnum - 1 END
        WHERE seriesUID = OLD.seriesUID AND upCloudnum > 0;
END;

-- recvnum counts the images of a series that has a row. The first look keeps imports and deletions as fast as they are
-- where nothing was ever uploaded.

CREATE TRIGGER imageformat_arrived AFTER INSERT ON imageformat WHEN EXISTS (SELECT 1 FROM series) BEGIN
    UPDATE series SET recvnum = ifnull(recvnum, 0) + 1
        WHERE seriesUID = (SELECT SeriesInstanceUID FROM generalseries WHERE pk = NEW.series_fk);
END;

CREATE TRIGGER imageformat_left AFTER DELETE ON imageformat
    WHEN EXISTS (SELECT 1 FROM series) OR EXISTS (SELECT 1 FROM images) OR EXISTS (SELECT 1 FROM uploadfile) BEGIN
    DELETE FROM images WHERE SOPInstanceUID = OLD.SOPInstanceUID;
    UPDATE series SET recvnum = recvnum - 1
        WHERE seriesUID = (SELECT SeriesInstanceUID FROM generalseries WHERE pk = OLD.series_fk);
    UPDATE uploadfile SET State = 3, Fault = 3
        WHERE SOPInstanceUID = OLD.SOPInstanceUID AND FilePath = OLD.FilePath AND State = 0;
END;

CREATE TRIGGER imageformat_changed_series AFTER UPDATE OF series_fk ON imageformat
    WHEN OLD.series_fk <> NEW.series_fk AND EXISTS (SELECT 1 FROM series) BEGIN
    DELETE FROM images WHERE SOPInstanceUID = NEW.SOPInstanceUID;
    UPDATE series SET recvnum = recvnum - 1
        WHERE seriesUID = (SELECT SeriesInstanceUID FROM generalseries WHERE pk = OLD.series_fk);
    UPDATE series SET recvnum = ifnull(recvnum, 0) + 1
        WHERE seriesUID = (SELECT SeriesInstanceUID FROM generalseries WHERE pk = NEW.series_fk);
END;

CREATE TRIGGER imageformat_other_file AFTER UPDATE OF FilePath ON imageformat WHEN NEW.FilePath <> OLD.FilePath BEGIN
    UPDATE uploadfile SET FilePath = NEW.FilePath
        WHERE SOPInstanceUID = NEW.SOPInstanceUID AND FilePath = OLD.FilePath AND State = 0;
END;

CREATE TRIGGER generalseries_left AFTER DELETE ON generalseries WHEN EXISTS (SELECT 1 FROM series) BEGIN
    UPDATE series SET recvnum = recvnum - OLD.NumberOfSeriesRelatedInstances WHERE seriesUID = OLD.SeriesInstanceUID;
    DELETE FROM series WHERE seriesUID = OLD.SeriesInstanceUID
        AND NOT EXISTS (SELECT 1 FROM generalseries WHERE SeriesInstanceUID = OLD.SeriesInstanceUID);
END;

DELETE FROM series WHERE seriesUID NOT IN (SELECT SeriesInstanceUID FROM generalseries);
DELETE FROM images WHERE SOPInstanceUID NOT IN (SELECT SOPInstanceUID FROM imageformat);
UPDATE series SET recvnum = (SELECT sum(NumberOfSeriesRelatedInstances) FROM generalseries
        WHERE SeriesInstanceUID = seriesUID),
    upCloudnum = nullif((SELECT count(*) FROM images WHERE images.seriesUID = series.seriesUID AND Cloudflag <> 0), 0);
