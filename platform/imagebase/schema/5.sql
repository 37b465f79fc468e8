-- Version 5: what the index and its store know each other by: a mark in the store's folder says the same. The count
-- grows with each transaction that enters files of the store, so that an older copy of the index is recognised.

CREATE TABLE store (
    pk INTEGER PRIMARY KEY CHECK (pk = 1),
    Identity TEXT NOT NULL,
    Changes INTEGER NOT NULL
);

INSERT INTO store (pk, Identity, Changes) VALUES (1, lower(hex(randomblob(16))), 0);
