-- Version 2: files that a replacement left behind. The row is written in the transaction that drops the last record of
-- the file and goes when the file has gone, so that a kill in between leaves a note instead of a stray file.

CREATE TABLE obsoletefile (
    FilePath TEXT PRIMARY KEY
);
