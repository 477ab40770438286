-- An empty catalogue. The declared types are read by the data engine: TEXT(n), INTEGER, DATETIME. The CHECKs make
-- the file itself refuse what does not fit, whichever machine writes.
PRAGMA page_size = 4096;
PRAGMA journal_mode = DELETE;
PRAGMA application_id = 0x56454C44;

-- Dates are texts of the form '2001-12-31 10:15:00'. A text of one fixed width sorts and compares as the date does.
CREATE TABLE tblPhotos (
  PhotoID INTEGER PRIMARY KEY CHECK (PhotoID BETWEEN -2147483648 AND 2147483647),
  ImageType TEXT(3) CHECK (length(ImageType) <= 3),
  Title TEXT(60) CHECK (length(Title) <= 60),
  CreateDate DATETIME
    CHECK (CreateDate IS NULL OR typeof(CreateDate) = 'text' AND CreateDate GLOB '????-??-?? ??:??:??'),
  MadeBy TEXT(26) CHECK (length(MadeBy) <= 26),
  Description TEXT(255) CHECK (length(Description) <= 255),
  LastModifyDate DATETIME
    CHECK (LastModifyDate IS NULL OR typeof(LastModifyDate) = 'text' AND LastModifyDate GLOB '????-??-?? ??:??:??')
);

-- The key is the row's number already. This index is for the list of all keys, which is read at every click on a
-- folder: it stands in a few narrow pages here and is spread over all the rows there.
CREATE INDEX PhotoKeys ON tblPhotos (PhotoID);

CREATE TABLE tblPhotoLinks (
  IDNo TEXT(40) NOT NULL CHECK (length(IDNo) = 40),
  PhotoID INTEGER NOT NULL CHECK (PhotoID BETWEEN -2147483648 AND 2147483647),
  PRIMARY KEY (IDNo, PhotoID)
) WITHOUT ROWID;

CREATE INDEX PhotosOfLinks ON tblPhotoLinks (PhotoID);

-- One table for each depth of the folder tree. A key is not held to four digits a level: the ten thousandth folder
-- of a parent has a digit more.
CREATE TABLE tblLevel1 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
CREATE TABLE tblLevel2 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
CREATE TABLE tblLevel3 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
CREATE TABLE tblLevel4 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
CREATE TABLE tblLevel5 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
CREATE TABLE tblLevel6 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
CREATE TABLE tblLevel7 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
CREATE TABLE tblLevel8 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
CREATE TABLE tblLevel9 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
CREATE TABLE tblLevel10 (
  IDNo TEXT(40) PRIMARY KEY NOT NULL CHECK (length(IDNo) <= 40),
  FolderName TEXT(255) CHECK (length(FolderName) <= 255)
) WITHOUT ROWID;
