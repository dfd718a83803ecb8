-- The lookup rows of a new database. The numbers of facility, charge and sickness types have a
-- fixed meaning in the program (charge type 1 is the patient who stays in the facility, and the
-- charge types are numbered from 1 without gaps); a doctor without visits is offered under
-- attention type 2.
INSERT INTO FacilityTypes (FacilityTypeCode, Description) VALUES
  (1, 'Hospital'), (2, 'Extended Care Facility'), (3, 'Home'), (4, 'Board & Care'), (5, 'Office');

INSERT INTO ChargeTypes (ChargeTypeCode, Description, DoctorCaption) VALUES
  (1, 'Inpatient', 'Attending'), (2, 'Outpatient', 'Referring');

INSERT INTO AttentionTypes (AttentionTypeCode, Description) VALUES (1, 'Consult'), (2, 'Visit');

INSERT INTO Frequency (Frequency, Description) VALUES (1, 'Daily'), (2, 'Weekly'), (3, 'Monthly');

INSERT INTO SicknessType (SicknessTypeCode, Description) VALUES
  (0, 'Allergies'), (1, 'Past Medical'), (2, 'Past Surgical');
