-- Tables, relations, saved queries of an office's database.
--
-- Declared types tell a record set what a column holds: SMALLINT 16 bits, INTEGER 32 bits, TEXT,
-- DATE 2003-06-15, TIME 14:05:09, DATETIME 2003-06-15 14:05:09. Checks keep every other form out; a
-- check is named after its column and what it keeps (Size, Range, Date, Time, Stamp), and refusals
-- are worded from that name.
-- Names compare without regard to ASCII case. Billing codes and accounts compare without regard to
-- trailing blanks, so that a code of blanks counts as empty.
-- 0 stands for no facility, ward or doctor in a patient's admission, and is no patient's, facility's,
-- ward's or doctor's number; everywhere else a number names an existing row.
-- A statement ends with a semicolon at the end of a line, a trigger with the line "END;".

-- Lookups: read by the program, never written.

CREATE TABLE FacilityTypes (
  FacilityTypeCode SMALLINT NOT NULL
    CONSTRAINT FacilityTypeCodeRange CHECK (typeof(FacilityTypeCode) = 'integer'
      AND FacilityTypeCode BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  PRIMARY KEY (FacilityTypeCode)
) WITHOUT ROWID;

CREATE TABLE ChargeTypes (
  ChargeTypeCode SMALLINT NOT NULL
    CONSTRAINT ChargeTypeCodeRange CHECK (typeof(ChargeTypeCode) = 'integer'
      AND ChargeTypeCode BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  DoctorCaption TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DoctorCaptionSize CHECK (length(DoctorCaption) <= 255),
  PRIMARY KEY (ChargeTypeCode)
) WITHOUT ROWID;

CREATE TABLE AttentionTypes (
  AttentionTypeCode SMALLINT NOT NULL
    CONSTRAINT AttentionTypeCodeRange CHECK (typeof(AttentionTypeCode) = 'integer'
      AND AttentionTypeCode BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  PRIMARY KEY (AttentionTypeCode)
) WITHOUT ROWID;

CREATE TABLE Frequency (
  Frequency SMALLINT NOT NULL
    CONSTRAINT FrequencyRange CHECK (typeof(Frequency) = 'integer'
      AND Frequency BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  PRIMARY KEY (Frequency)
) WITHOUT ROWID;

CREATE TABLE SicknessType (
  SicknessTypeCode SMALLINT NOT NULL
    CONSTRAINT SicknessTypeCodeRange CHECK (typeof(SicknessTypeCode) = 'integer'
      AND SicknessTypeCode BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  PRIMARY KEY (SicknessTypeCode)
) WITHOUT ROWID;

-- Catalogues. `checked` is the working column of client copies: 0 in every stored row.

CREATE TABLE Insurance (
  InsuranceCode SMALLINT NOT NULL
    CONSTRAINT InsuranceCodeRange CHECK (typeof(InsuranceCode) = 'integer'
      AND InsuranceCode BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  BillingInsuranceCode TEXT NOT NULL DEFAULT '' COLLATE RTRIM
    CONSTRAINT BillingInsuranceCodeSize CHECK (length(BillingInsuranceCode) <= 255),
  PRIMARY KEY (InsuranceCode)
) WITHOUT ROWID;

CREATE TABLE DiagnosisFamily (
  DiagnosisFamilyCode SMALLINT NOT NULL
    CONSTRAINT DiagnosisFamilyCodeRange CHECK (typeof(DiagnosisFamilyCode) = 'integer'
      AND DiagnosisFamilyCode BETWEEN -32768 AND 32767),
  DiagnosisFamilyDescription TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DiagnosisFamilyDescriptionSize CHECK (length(DiagnosisFamilyDescription) <= 255),
  PRIMARY KEY (DiagnosisFamilyCode)
) WITHOUT ROWID;

CREATE TABLE Diagnosis (
  DiagnosisCode SMALLINT NOT NULL
    CONSTRAINT DiagnosisCodeRange CHECK (typeof(DiagnosisCode) = 'integer'
      AND DiagnosisCode BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  DiagnosisFamilyCode SMALLINT NOT NULL REFERENCES DiagnosisFamily
    CONSTRAINT DiagnosisFamilyCodeRange CHECK (typeof(DiagnosisFamilyCode) = 'integer'
      AND DiagnosisFamilyCode BETWEEN -32768 AND 32767),
  RealDiagnosisCode TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT RealDiagnosisCodeSize CHECK (length(RealDiagnosisCode) <= 255),
  BillingDiagnosisCode TEXT NOT NULL DEFAULT '' COLLATE RTRIM
    CONSTRAINT BillingDiagnosisCodeSize CHECK (length(BillingDiagnosisCode) <= 255),
  checked SMALLINT NOT NULL DEFAULT 0
    CONSTRAINT checkedRange CHECK (typeof(checked) = 'integer'
      AND checked BETWEEN -32768 AND 32767),
  PRIMARY KEY (DiagnosisCode)
) WITHOUT ROWID;

CREATE TABLE Procedures (
  ProcedureCode SMALLINT NOT NULL
    CONSTRAINT ProcedureCodeRange CHECK (typeof(ProcedureCode) = 'integer'
      AND ProcedureCode BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  RealProcedureCode TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT RealProcedureCodeSize CHECK (length(RealProcedureCode) <= 255),
  BillingProcedureCode TEXT NOT NULL DEFAULT '' COLLATE RTRIM
    CONSTRAINT BillingProcedureCodeSize CHECK (length(BillingProcedureCode) <= 255),
  checked SMALLINT NOT NULL DEFAULT 0
    CONSTRAINT checkedRange CHECK (typeof(checked) = 'integer'
      AND checked BETWEEN -32768 AND 32767),
  PRIMARY KEY (ProcedureCode)
) WITHOUT ROWID;

CREATE TABLE EvaluationManagement (
  EMCode INTEGER NOT NULL
    CONSTRAINT EMCodeRange CHECK (typeof(EMCode) = 'integer'
      AND EMCode BETWEEN -2147483648 AND 2147483647),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  FacilityTypeCode SMALLINT NOT NULL REFERENCES FacilityTypes
    CONSTRAINT FacilityTypeCodeRange CHECK (typeof(FacilityTypeCode) = 'integer'
      AND FacilityTypeCode BETWEEN -32768 AND 32767),
  ChargeTypeCode SMALLINT NOT NULL REFERENCES ChargeTypes
    CONSTRAINT ChargeTypeCodeRange CHECK (typeof(ChargeTypeCode) = 'integer'
      AND ChargeTypeCode BETWEEN -32768 AND 32767),
  AttentionTypeCode SMALLINT NOT NULL REFERENCES AttentionTypes
    CONSTRAINT AttentionTypeCodeRange CHECK (typeof(AttentionTypeCode) = 'integer'
      AND AttentionTypeCode BETWEEN -32768 AND 32767),
  BillingEMCode TEXT NOT NULL DEFAULT '' COLLATE RTRIM
    CONSTRAINT BillingEMCodeSize CHECK (length(BillingEMCode) <= 255),
  RealEMCode TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT RealEMCodeSize CHECK (length(RealEMCode) <= 255),
  ShowOnFirst SMALLINT NOT NULL
    CONSTRAINT ShowOnFirstRange CHECK (typeof(ShowOnFirst) = 'integer'
      AND ShowOnFirst BETWEEN -32768 AND 32767),
  ShowOnNext SMALLINT NOT NULL
    CONSTRAINT ShowOnNextRange CHECK (typeof(ShowOnNext) = 'integer'
      AND ShowOnNext BETWEEN -32768 AND 32767),
  IsDischarge SMALLINT NOT NULL
    CONSTRAINT IsDischargeRange CHECK (typeof(IsDischarge) = 'integer'
      AND IsDischarge BETWEEN -32768 AND 32767),
  PRIMARY KEY (EMCode)
) WITHOUT ROWID;

CREATE TABLE Facility (
  FacilityCode SMALLINT NOT NULL
    CONSTRAINT FacilityCodeRange CHECK (typeof(FacilityCode) = 'integer'
      AND FacilityCode BETWEEN -32768 AND 32767 AND FacilityCode <> 0),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  FacilityTypeCode SMALLINT NOT NULL REFERENCES FacilityTypes
    CONSTRAINT FacilityTypeCodeRange CHECK (typeof(FacilityTypeCode) = 'integer'
      AND FacilityTypeCode BETWEEN -32768 AND 32767),
  BillingFacilityCode TEXT NOT NULL DEFAULT '' COLLATE RTRIM
    CONSTRAINT BillingFacilityCodeSize CHECK (length(BillingFacilityCode) <= 255),
  BillingFacilityCodeOut TEXT NOT NULL DEFAULT '' COLLATE RTRIM
    CONSTRAINT BillingFacilityCodeOutSize CHECK (length(BillingFacilityCodeOut) <= 255),
  PRIMARY KEY (FacilityCode)
) WITHOUT ROWID;

CREATE TABLE FacilityWards (
  WardCode SMALLINT NOT NULL
    CONSTRAINT WardCodeRange CHECK (typeof(WardCode) = 'integer'
      AND WardCode BETWEEN -32768 AND 32767 AND WardCode <> 0),
  FacilityCode SMALLINT NOT NULL REFERENCES Facility ON DELETE CASCADE
    CONSTRAINT FacilityCodeRange CHECK (typeof(FacilityCode) = 'integer'
      AND FacilityCode BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  checked SMALLINT NOT NULL DEFAULT 0
    CONSTRAINT checkedRange CHECK (typeof(checked) = 'integer'
      AND checked BETWEEN -32768 AND 32767),
  PRIMARY KEY (WardCode)
) WITHOUT ROWID;

CREATE TABLE Doctors (
  DoctorCode SMALLINT NOT NULL
    CONSTRAINT DoctorCodeRange CHECK (typeof(DoctorCode) = 'integer'
      AND DoctorCode BETWEEN -32768 AND 32767 AND DoctorCode <> 0),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  BillingDoctorCode TEXT NOT NULL DEFAULT '' COLLATE RTRIM
    CONSTRAINT BillingDoctorCodeSize CHECK (length(BillingDoctorCode) <= 255),
  PRIMARY KEY (DoctorCode)
) WITHOUT ROWID;

CREATE TABLE DoctorCoveringDoctors (
  DoctorCode SMALLINT NOT NULL REFERENCES Doctors ON DELETE CASCADE
    CONSTRAINT DoctorCodeRange CHECK (typeof(DoctorCode) = 'integer'
      AND DoctorCode BETWEEN -32768 AND 32767),
  CoveringDoctorCode SMALLINT NOT NULL REFERENCES Doctors ON DELETE CASCADE
    CONSTRAINT CoveringDoctorCodeRange CHECK (typeof(CoveringDoctorCode) = 'integer'
      AND CoveringDoctorCode BETWEEN -32768 AND 32767),
  PRIMARY KEY (DoctorCode, CoveringDoctorCode)
) WITHOUT ROWID;

CREATE TABLE Sickness (
  SicknessCode SMALLINT NOT NULL
    CONSTRAINT SicknessCodeRange CHECK (typeof(SicknessCode) = 'integer'
      AND SicknessCode BETWEEN -32768 AND 32767),
  Description TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT DescriptionSize CHECK (length(Description) <= 255),
  SicknessTypeCode SMALLINT NOT NULL REFERENCES SicknessType
    CONSTRAINT SicknessTypeCodeRange CHECK (typeof(SicknessTypeCode) = 'integer'
      AND SicknessTypeCode BETWEEN -32768 AND 32767),
  checked SMALLINT NOT NULL DEFAULT 0
    CONSTRAINT checkedRange CHECK (typeof(checked) = 'integer'
      AND checked BETWEEN -32768 AND 32767),
  PRIMARY KEY (SicknessCode)
) WITHOUT ROWID;

-- Patients. Triggers further down stand in for the relations of the three admission columns.

CREATE TABLE Patient (
  PatientId SMALLINT NOT NULL
    CONSTRAINT PatientIdRange CHECK (typeof(PatientId) = 'integer'
      AND PatientId BETWEEN -32768 AND 32767 AND PatientId <> 0),
  Names TEXT NOT NULL DEFAULT '' COLLATE NOCASE
    CONSTRAINT NamesSize CHECK (length(Names) <= 255),
  DateOfBirth DATE
    CONSTRAINT DateOfBirthDate CHECK (DateOfBirth IS date(DateOfBirth, '+0 days')),
  AccountNumber TEXT NOT NULL DEFAULT '' COLLATE RTRIM
    CONSTRAINT AccountNumberSize CHECK (length(AccountNumber) <= 255),
  InsuranceCode SMALLINT NOT NULL REFERENCES Insurance
    CONSTRAINT InsuranceCodeRange CHECK (typeof(InsuranceCode) = 'integer'
      AND InsuranceCode BETWEEN -32768 AND 32767),
  InFacilityCode SMALLINT NOT NULL DEFAULT 0
    CONSTRAINT InFacilityCodeRange CHECK (typeof(InFacilityCode) = 'integer'
      AND InFacilityCode BETWEEN -32768 AND 32767),
  InWardCode SMALLINT NOT NULL DEFAULT 0
    CONSTRAINT InWardCodeRange CHECK (typeof(InWardCode) = 'integer'
      AND InWardCode BETWEEN -32768 AND 32767),
  InDoctorCode SMALLINT NOT NULL DEFAULT 0
    CONSTRAINT InDoctorCodeRange CHECK (typeof(InDoctorCode) = 'integer'
      AND InDoctorCode BETWEEN -32768 AND 32767),
  LastChargeDate DATE
    CONSTRAINT LastChargeDateDate CHECK (LastChargeDate IS date(LastChargeDate, '+0 days')),
  ZITS DATETIME
    CONSTRAINT ZITSStamp CHECK (ZITS IS datetime(ZITS, '+0 seconds')),
  PRIMARY KEY (PatientId)
) WITHOUT ROWID;

CREATE TABLE PatientHistory (
  PatientId SMALLINT NOT NULL REFERENCES Patient ON DELETE CASCADE
    CONSTRAINT PatientIdRange CHECK (typeof(PatientId) = 'integer'
      AND PatientId BETWEEN -32768 AND 32767),
  SicknessCode SMALLINT NOT NULL REFERENCES Sickness
    CONSTRAINT SicknessCodeRange CHECK (typeof(SicknessCode) = 'integer'
      AND SicknessCode BETWEEN -32768 AND 32767),
  SicknessTypeCode SMALLINT NOT NULL REFERENCES SicknessType
    CONSTRAINT SicknessTypeCodeRange CHECK (typeof(SicknessTypeCode) = 'integer'
      AND SicknessTypeCode BETWEEN -32768 AND 32767),
  PRIMARY KEY (PatientId, SicknessCode, SicknessTypeCode)
) WITHOUT ROWID;

CREATE TABLE PatientDoctors (
  PatientId SMALLINT NOT NULL REFERENCES Patient ON DELETE CASCADE
    CONSTRAINT PatientIdRange CHECK (typeof(PatientId) = 'integer'
      AND PatientId BETWEEN -32768 AND 32767),
  DoctorCode SMALLINT NOT NULL REFERENCES Doctors
    CONSTRAINT DoctorCodeRange CHECK (typeof(DoctorCode) = 'integer'
      AND DoctorCode BETWEEN -32768 AND 32767),
  AttentionTypeCode SMALLINT NOT NULL REFERENCES AttentionTypes
    CONSTRAINT AttentionTypeCodeRange CHECK (typeof(AttentionTypeCode) = 'integer'
      AND AttentionTypeCode BETWEEN -32768 AND 32767),
  Frequency SMALLINT NOT NULL REFERENCES Frequency
    CONSTRAINT FrequencyRange CHECK (typeof(Frequency) = 'integer'
      AND Frequency BETWEEN -32768 AND 32767),
  PRIMARY KEY (PatientId, DoctorCode)
) WITHOUT ROWID;

-- Charges. A table with row numbers, unlike the others: without them the planner walks an index and
-- looks every row up instead of reading the table, which takes twice the time for the whole view
-- and ten times for one doctor.

CREATE TABLE PatientCharges (
  PatientId SMALLINT NOT NULL REFERENCES Patient
    CONSTRAINT PatientIdRange CHECK (typeof(PatientId) = 'integer'
      AND PatientId BETWEEN -32768 AND 32767),
  ChargeDate DATE NOT NULL
    CONSTRAINT ChargeDateDate CHECK (ChargeDate IS date(ChargeDate, '+0 days')),
  ChargeTime TIME NOT NULL
    CONSTRAINT ChargeTimeTime CHECK (ChargeTime IS time(ChargeTime, '+0 seconds')),
  ChargeRealDate DATE NOT NULL
    CONSTRAINT ChargeRealDateDate CHECK (ChargeRealDate IS date(ChargeRealDate, '+0 days')),
  FacilityCode SMALLINT NOT NULL REFERENCES Facility
    CONSTRAINT FacilityCodeRange CHECK (typeof(FacilityCode) = 'integer'
      AND FacilityCode BETWEEN -32768 AND 32767),
  EMCode INTEGER NOT NULL REFERENCES EvaluationManagement
    CONSTRAINT EMCodeRange CHECK (typeof(EMCode) = 'integer'
      AND EMCode BETWEEN -2147483648 AND 2147483647),
  DoctorCode SMALLINT NOT NULL REFERENCES Doctors
    CONSTRAINT DoctorCodeRange CHECK (typeof(DoctorCode) = 'integer'
      AND DoctorCode BETWEEN -32768 AND 32767),
  ReferDoctorCode SMALLINT NOT NULL REFERENCES Doctors
    CONSTRAINT ReferDoctorCodeRange CHECK (typeof(ReferDoctorCode) = 'integer'
      AND ReferDoctorCode BETWEEN -32768 AND 32767),
  Status SMALLINT NOT NULL
    CONSTRAINT StatusRange CHECK (typeof(Status) = 'integer' AND Status BETWEEN -32768 AND 32767),
  PrintLot INTEGER
    CONSTRAINT PrintLotRange CHECK (PrintLot IS NULL OR typeof(PrintLot) = 'integer'
      AND PrintLot BETWEEN -2147483648 AND 2147483647),
  PRIMARY KEY (PatientId, ChargeDate, ChargeTime)
);

CREATE TABLE ChargeDiagnosis (
  PatientId SMALLINT NOT NULL
    CONSTRAINT PatientIdRange CHECK (typeof(PatientId) = 'integer'
      AND PatientId BETWEEN -32768 AND 32767),
  ChargeDate DATE NOT NULL
    CONSTRAINT ChargeDateDate CHECK (ChargeDate IS date(ChargeDate, '+0 days')),
  ChargeTime TIME NOT NULL
    CONSTRAINT ChargeTimeTime CHECK (ChargeTime IS time(ChargeTime, '+0 seconds')),
  DiagnosisCode SMALLINT NOT NULL REFERENCES Diagnosis
    CONSTRAINT DiagnosisCodeRange CHECK (typeof(DiagnosisCode) = 'integer'
      AND DiagnosisCode BETWEEN -32768 AND 32767),
  PRIMARY KEY (PatientId, ChargeDate, ChargeTime, DiagnosisCode),
  FOREIGN KEY (PatientId, ChargeDate, ChargeTime) REFERENCES PatientCharges
    ON UPDATE CASCADE ON DELETE CASCADE
) WITHOUT ROWID;

CREATE TABLE ChargeProcedures (
  PatientId SMALLINT NOT NULL
    CONSTRAINT PatientIdRange CHECK (typeof(PatientId) = 'integer'
      AND PatientId BETWEEN -32768 AND 32767),
  ChargeDate DATE NOT NULL
    CONSTRAINT ChargeDateDate CHECK (ChargeDate IS date(ChargeDate, '+0 days')),
  ChargeTime TIME NOT NULL
    CONSTRAINT ChargeTimeTime CHECK (ChargeTime IS time(ChargeTime, '+0 seconds')),
  ProcedureCode SMALLINT NOT NULL REFERENCES Procedures
    CONSTRAINT ProcedureCodeRange CHECK (typeof(ProcedureCode) = 'integer'
      AND ProcedureCode BETWEEN -32768 AND 32767),
  PRIMARY KEY (PatientId, ChargeDate, ChargeTime, ProcedureCode),
  FOREIGN KEY (PatientId, ChargeDate, ChargeTime) REFERENCES PatientCharges
    ON UPDATE CASCADE ON DELETE CASCADE
) WITHOUT ROWID;

-- The indexes that were measured to pay. None on Status alone, which would draw the planner away
-- from the date; none on doctor, facility or insurance, where reading the table is as quick; none
-- for refused deletes.

CREATE INDEX ChargesByDate ON PatientCharges (ChargeRealDate);
CREATE INDEX ChargesByStatus ON PatientCharges (Status, ChargeRealDate);
CREATE INDEX ChargesByLot ON PatientCharges (PrintLot);
CREATE INDEX ChargesToArchive ON PatientCharges (PatientId, ChargeRealDate DESC) WHERE Status <> 3;

-- What the planner must know of the statuses: they narrow less than a patient does, more than an
-- insurance. Statistics gathered from the rows would mislead it about the statuses that are rare.
ANALYZE sqlite_schema;
INSERT INTO sqlite_stat1 (tbl, idx, stat)
  VALUES ('PatientCharges', 'ChargesByStatus', '1000000 2000 400');
ANALYZE sqlite_schema;

-- A record in use refuses its deletion with the name of the user. The relations refuse it as well;
-- their refusal names nobody.

CREATE TRIGGER InsuranceInUse BEFORE DELETE ON Insurance
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: patients still use it.')
  WHERE EXISTS (SELECT 1 FROM Patient WHERE InsuranceCode = OLD.InsuranceCode);
END;

CREATE TRIGGER DiagnosisFamilyInUse BEFORE DELETE ON DiagnosisFamily
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: diagnoses still use it.')
  WHERE EXISTS (SELECT 1 FROM Diagnosis WHERE DiagnosisFamilyCode = OLD.DiagnosisFamilyCode);
END;

CREATE TRIGGER DiagnosisInUse BEFORE DELETE ON Diagnosis
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: charges still use it.')
  WHERE EXISTS (SELECT 1 FROM ChargeDiagnosis WHERE DiagnosisCode = OLD.DiagnosisCode);
END;

CREATE TRIGGER ProceduresInUse BEFORE DELETE ON Procedures
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: charges still use it.')
  WHERE EXISTS (SELECT 1 FROM ChargeProcedures WHERE ProcedureCode = OLD.ProcedureCode);
END;

CREATE TRIGGER EvaluationManagementInUse BEFORE DELETE ON EvaluationManagement
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: charges still use it.')
  WHERE EXISTS (SELECT 1 FROM PatientCharges WHERE EMCode = OLD.EMCode);
END;

CREATE TRIGGER FacilityInUse BEFORE DELETE ON Facility
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: charges still use it.')
  WHERE EXISTS (SELECT 1 FROM PatientCharges WHERE FacilityCode = OLD.FacilityCode);
  SELECT RAISE(ABORT, 'This record cannot be deleted: patients still use it.')
  WHERE EXISTS (SELECT 1 FROM Patient WHERE InFacilityCode = OLD.FacilityCode);
END;

CREATE TRIGGER FacilityWardsInUse BEFORE DELETE ON FacilityWards
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: patients still use it.')
  WHERE EXISTS (SELECT 1 FROM Patient WHERE InWardCode = OLD.WardCode);
END;

CREATE TRIGGER DoctorsInUse BEFORE DELETE ON Doctors
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: charges still use it.')
  WHERE EXISTS (
    SELECT 1 FROM PatientCharges
    WHERE DoctorCode = OLD.DoctorCode OR ReferDoctorCode = OLD.DoctorCode);
  SELECT RAISE(ABORT, 'This record cannot be deleted: patients still use it.')
  WHERE EXISTS (SELECT 1 FROM Patient WHERE InDoctorCode = OLD.DoctorCode);
  SELECT RAISE(ABORT, 'This record cannot be deleted: patients still use it.')
  WHERE EXISTS (SELECT 1 FROM PatientDoctors WHERE DoctorCode = OLD.DoctorCode);
END;

CREATE TRIGGER SicknessInUse BEFORE DELETE ON Sickness
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: patients still use it.')
  WHERE EXISTS (SELECT 1 FROM PatientHistory WHERE SicknessCode = OLD.SicknessCode);
END;

CREATE TRIGGER PatientInUse BEFORE DELETE ON Patient
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be deleted: charges still use it.')
  WHERE EXISTS (SELECT 1 FROM PatientCharges WHERE PatientId = OLD.PatientId);
END;

-- Doubles that a user can bring about. The keys refuse them as well; their refusal does not say what
-- stands there twice.

CREATE TRIGGER PatientChargesMoveDouble
  BEFORE UPDATE OF PatientId ON PatientCharges WHEN NEW.PatientId <> OLD.PatientId
BEGIN
  SELECT RAISE(ABORT, 'Both patients have a charge that was entered on the same date at the same time. Nothing was moved.')
  WHERE EXISTS (
    SELECT 1 FROM PatientCharges
    WHERE PatientId = NEW.PatientId
      AND ChargeDate = NEW.ChargeDate AND ChargeTime = NEW.ChargeTime);
END;

CREATE TRIGGER PatientDoctorsDouble BEFORE INSERT ON PatientDoctors
BEGIN
  SELECT RAISE(ABORT, 'This doctor is among the visiting doctors already.')
  WHERE EXISTS (
    SELECT 1 FROM PatientDoctors
    WHERE PatientId = NEW.PatientId AND DoctorCode = NEW.DoctorCode);
END;

CREATE TRIGGER PatientHistoryDouble BEFORE INSERT ON PatientHistory
BEGIN
  SELECT RAISE(ABORT, 'This item is in the medical history already.')
  WHERE EXISTS (
    SELECT 1 FROM PatientHistory
    WHERE PatientId = NEW.PatientId AND SicknessCode = NEW.SicknessCode
      AND SicknessTypeCode = NEW.SicknessTypeCode);
END;

-- Where 0 means none, these refuse what a relation would.

CREATE TRIGGER PatientAdmissionInsert
  BEFORE INSERT ON Patient
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be stored: its facility does not exist.')
  WHERE NEW.InFacilityCode <> 0
    AND NOT EXISTS (SELECT 1 FROM Facility WHERE FacilityCode = NEW.InFacilityCode);
  SELECT RAISE(ABORT, 'This record cannot be stored: its ward does not exist.')
  WHERE NEW.InWardCode <> 0
    AND NOT EXISTS (SELECT 1 FROM FacilityWards WHERE WardCode = NEW.InWardCode);
  SELECT RAISE(ABORT, 'This record cannot be stored: its doctor does not exist.')
  WHERE NEW.InDoctorCode <> 0
    AND NOT EXISTS (SELECT 1 FROM Doctors WHERE DoctorCode = NEW.InDoctorCode);
END;

CREATE TRIGGER PatientAdmissionUpdate
  BEFORE UPDATE OF InFacilityCode, InWardCode, InDoctorCode ON Patient
BEGIN
  SELECT RAISE(ABORT, 'This record cannot be stored: its facility does not exist.')
  WHERE NEW.InFacilityCode <> 0
    AND NOT EXISTS (SELECT 1 FROM Facility WHERE FacilityCode = NEW.InFacilityCode);
  SELECT RAISE(ABORT, 'This record cannot be stored: its ward does not exist.')
  WHERE NEW.InWardCode <> 0
    AND NOT EXISTS (SELECT 1 FROM FacilityWards WHERE WardCode = NEW.InWardCode);
  SELECT RAISE(ABORT, 'This record cannot be stored: its doctor does not exist.')
  WHERE NEW.InDoctorCode <> 0
    AND NOT EXISTS (SELECT 1 FROM Doctors WHERE DoctorCode = NEW.InDoctorCode);
END;

-- Saved queries, each in the order of its key, no two columns of one name.

-- Not ordered: its list sorts it. Everything is joined loosely, so that no filter but the patient's
-- insurance starts from another table than the charges, whatever statistics the file holds.
CREATE VIEW ChargesDescriptive AS
SELECT c.PatientId, c.ChargeDate, c.ChargeTime, c.ChargeRealDate, c.FacilityCode, c.EMCode,
  c.DoctorCode, c.ReferDoctorCode, c.Status, c.PrintLot,
  CASE c.Status WHEN 0 THEN 'Ready' WHEN 1 THEN 'Posted' WHEN 2 THEN 'Archived' ELSE '' END
    AS StatusDescription,
  p.Names, p.DateOfBirth, p.AccountNumber, p.InsuranceCode, i.Description AS Insurance,
  e.Description AS EMDescription, e.RealEMCode, e.BillingEMCode, e.ChargeTypeCode,
  f.Description AS Facility, f.BillingFacilityCode, f.BillingFacilityCodeOut,
  d.Description AS Doctor, d.BillingDoctorCode,
  r.Description AS ReferDoctor, r.BillingDoctorCode AS BillingReferDoctorCode
FROM PatientCharges c
LEFT JOIN Patient p ON p.PatientId = c.PatientId
LEFT JOIN Insurance i ON i.InsuranceCode = p.InsuranceCode
LEFT JOIN EvaluationManagement e ON e.EMCode = c.EMCode
LEFT JOIN Facility f ON f.FacilityCode = c.FacilityCode
LEFT JOIN Doctors d ON d.DoctorCode = c.DoctorCode
LEFT JOIN Doctors r ON r.DoctorCode = c.ReferDoctorCode;

CREATE VIEW ChargeDiagnosisDescriptive AS
SELECT c.PatientId, c.ChargeDate, c.ChargeTime, c.DiagnosisCode, d.Description, 0 AS checked
FROM ChargeDiagnosis c
JOIN Diagnosis d ON d.DiagnosisCode = c.DiagnosisCode
ORDER BY c.PatientId, c.ChargeDate, c.ChargeTime, c.DiagnosisCode;

CREATE VIEW ChargeProceduresDescriptive AS
SELECT c.PatientId, c.ChargeDate, c.ChargeTime, c.ProcedureCode, p.Description, 0 AS checked
FROM ChargeProcedures c
JOIN Procedures p ON p.ProcedureCode = c.ProcedureCode
ORDER BY c.PatientId, c.ChargeDate, c.ChargeTime, c.ProcedureCode;

CREATE VIEW PatientsDescriptive AS
SELECT p.PatientId, p.Names, p.DateOfBirth, p.AccountNumber, p.InsuranceCode, i.Description,
  p.InFacilityCode, f.Description AS FacilityName, p.InWardCode, p.InDoctorCode
FROM Patient p
LEFT JOIN Insurance i ON i.InsuranceCode = p.InsuranceCode
LEFT JOIN Facility f ON f.FacilityCode = p.InFacilityCode
ORDER BY p.PatientId;

CREATE VIEW PatientsDescriptiveAdmitted AS
SELECT * FROM PatientsDescriptive WHERE InFacilityCode <> 0 ORDER BY PatientId;

CREATE VIEW PatientsDescriptiveNotAdmitted AS
SELECT * FROM PatientsDescriptive WHERE InFacilityCode = 0 ORDER BY PatientId;

-- Incomplete: no account, no name, no date of birth, or an insurance that does not exist.
CREATE VIEW PatientsDescriptiveInconsistent AS
SELECT * FROM PatientsDescriptive
WHERE AccountNumber = '' OR rtrim(Names) = '' OR DateOfBirth IS NULL OR Description IS NULL
ORDER BY PatientId;

-- Doubles. Names and accounts are compared by bw_fold, the program's folding of letter case, which
-- the engine is given when the file is opened. What is missing is not shared.
CREATE VIEW PatientsDescriptiveDupDOB AS
SELECT * FROM PatientsDescriptive
WHERE DateOfBirth IN (SELECT DateOfBirth FROM Patient GROUP BY DateOfBirth HAVING count(*) > 1)
ORDER BY PatientId;

CREATE VIEW PatientsDescriptiveDupName AS
SELECT * FROM PatientsDescriptive
WHERE bw_fold(rtrim(Names)) IN (
  SELECT bw_fold(rtrim(Names)) FROM Patient WHERE rtrim(Names) <> ''
  GROUP BY bw_fold(rtrim(Names)) HAVING count(*) > 1)
ORDER BY PatientId;

CREATE VIEW PatientsDescriptiveDupDOBName AS
SELECT * FROM PatientsDescriptive
WHERE (DateOfBirth, bw_fold(rtrim(Names))) IN (
  SELECT DateOfBirth, bw_fold(rtrim(Names)) FROM Patient WHERE rtrim(Names) <> ''
  GROUP BY DateOfBirth, bw_fold(rtrim(Names)) HAVING count(*) > 1)
ORDER BY PatientId;

CREATE VIEW PatientsDescriptiveDupAccount AS
SELECT * FROM PatientsDescriptive
WHERE bw_fold(rtrim(AccountNumber)) IN (
  SELECT bw_fold(rtrim(AccountNumber)) FROM Patient WHERE AccountNumber <> ''
  GROUP BY bw_fold(rtrim(AccountNumber)) HAVING count(*) > 1)
ORDER BY PatientId;

CREATE VIEW PatientsHistoryDescriptive AS
SELECT h.PatientId, h.SicknessCode, h.SicknessTypeCode, s.Description, 0 AS checked
FROM PatientHistory h
JOIN Sickness s ON s.SicknessCode = h.SicknessCode
ORDER BY h.PatientId, h.SicknessCode, h.SicknessTypeCode;

CREATE VIEW PatientDoctorsDescriptive AS
SELECT v.PatientId, v.DoctorCode, d.Description AS Names,
  v.AttentionTypeCode, a.Description AS AttentionTypeDescription,
  v.Frequency, f.Description AS FrequencyDescription, 0 AS checked
FROM PatientDoctors v
JOIN Doctors d ON d.DoctorCode = v.DoctorCode
LEFT JOIN AttentionTypes a ON a.AttentionTypeCode = v.AttentionTypeCode
LEFT JOIN Frequency f ON f.Frequency = v.Frequency
ORDER BY v.PatientId, v.DoctorCode;

-- The attention type under which the doctor visits most of the admitted patients whom another doctor
-- attends, the lowest of equals, 0 when he visits none. His own patients do not count: an admission
-- enters the attending doctor under type 1, whatever that type is called. Nor do patients who have
-- been discharged, whose visiting doctors stay entered.
CREATE VIEW DoctorsDescriptive AS
SELECT d.DoctorCode, d.Description AS Names, coalesce(v.AttentionTypeCode, 0) AS AttentionTypeCode
FROM Doctors d
LEFT JOIN (
  SELECT o.DoctorCode, o.AttentionTypeCode,
    row_number() OVER (PARTITION BY o.DoctorCode ORDER BY count(*) DESC, o.AttentionTypeCode)
      AS Place
  FROM PatientDoctors o
  JOIN Patient p ON p.PatientId = o.PatientId
  WHERE p.InFacilityCode <> 0 AND p.InDoctorCode <> o.DoctorCode
  GROUP BY o.DoctorCode, o.AttentionTypeCode
) v ON v.DoctorCode = d.DoctorCode AND v.Place = 1
ORDER BY d.DoctorCode;

CREATE VIEW Coverage AS
SELECT c.DoctorCode, c.CoveringDoctorCode, d.Description AS Names, 0 AS checked
FROM DoctorCoveringDoctors c
JOIN Doctors d ON d.DoctorCode = c.CoveringDoctorCode
ORDER BY c.DoctorCode, c.CoveringDoctorCode;

CREATE VIEW FacilitiesDescriptive AS
SELECT f.FacilityCode, f.Description, t.Description AS TypeDescription,
  f.BillingFacilityCode, f.BillingFacilityCodeOut, f.FacilityTypeCode
FROM Facility f
LEFT JOIN FacilityTypes t ON t.FacilityTypeCode = f.FacilityTypeCode
ORDER BY f.FacilityCode;

CREATE VIEW DiagnosisDescriptive AS
SELECT d.DiagnosisCode, d.Description, d.DiagnosisFamilyCode, d.RealDiagnosisCode,
  d.BillingDiagnosisCode, d.checked, f.DiagnosisFamilyDescription AS FamilyDesc
FROM Diagnosis d
LEFT JOIN DiagnosisFamily f ON f.DiagnosisFamilyCode = d.DiagnosisFamilyCode
ORDER BY d.DiagnosisCode;

CREATE VIEW EMCodesDescriptive AS
SELECT e.EMCode, e.Description, e.FacilityTypeCode, e.ChargeTypeCode, e.AttentionTypeCode,
  e.BillingEMCode, e.RealEMCode, e.ShowOnFirst, e.ShowOnNext, e.IsDischarge,
  f.Description AS FacilityTypeDescription, c.Description AS ChargeTypeDescription,
  a.Description AS AttentionTypeDescription
FROM EvaluationManagement e
LEFT JOIN FacilityTypes f ON f.FacilityTypeCode = e.FacilityTypeCode
LEFT JOIN ChargeTypes c ON c.ChargeTypeCode = e.ChargeTypeCode
LEFT JOIN AttentionTypes a ON a.AttentionTypeCode = e.AttentionTypeCode
ORDER BY e.EMCode;

CREATE VIEW SicknessDescriptive AS
SELECT s.SicknessCode, s.Description, s.SicknessTypeCode, s.checked,
  t.Description AS SicknessTypeDescription
FROM Sickness s
LEFT JOIN SicknessType t ON t.SicknessTypeCode = s.SicknessTypeCode
ORDER BY s.SicknessCode;
