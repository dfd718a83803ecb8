-- Saved queries of an office's database, each in the order of its key, no two columns of one name.
-- ChargesDescriptive is described in SavedQueries.cpp.
-- Each ends with the one semicolon at the end of a line.

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
