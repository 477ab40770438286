-- The template of the working copy: a database without a table. The program makes the tables itself in the copy, at
-- every start.
PRAGMA page_size = 4096;
PRAGMA journal_mode = DELETE;
PRAGMA application_id = 0x56454C44;
