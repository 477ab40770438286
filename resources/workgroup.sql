-- The workgroup file: the accounts that may open databases. PasswordHash is the hexadecimal SHA-256 of the salt
-- followed by the password.
PRAGMA page_size = 4096;
PRAGMA journal_mode = DELETE;
PRAGMA application_id = 0x56454C44;

CREATE TABLE Accounts (
  Name TEXT(20) PRIMARY KEY NOT NULL,
  Salt TEXT(16) NOT NULL,
  PasswordHash TEXT(64) NOT NULL
) WITHOUT ROWID;

INSERT INTO Accounts VALUES
  ('Veldrin', '7c1f0e93a5d2486b',
   '51ba039ac2e5f48f87ea87053858c2aba172601121188d32776592462e3861d8');
