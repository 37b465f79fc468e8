-- Version 4: deletions that have begun, each noted before its first file goes and forgotten in the transaction that
-- drops its records, so that a kill in between leaves a note instead of records without files. Of copies it is asked
-- which records name a file.

CREATE TABLE deletion (
    pk INTEGER PRIMARY KEY AUTOINCREMENT,
    Level INTEGER NOT NULL,
    RecordKeys TEXT NOT NULL,
    EveryFile INTEGER NOT NULL,
    LastImage INTEGER NOT NULL
);

CREATE INDEX imageformat_copy ON imageformat (FilePath) WHERE IrradiationEventUID = 'copy';
