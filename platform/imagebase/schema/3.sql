-- Version 3: a few stored inquiries to begin with, unless somebody already has some of their own.

INSERT INTO andvancequiry (UserName, InquiryName, GroupName, FieldName, Symbol, FieldValue, Logic, QueryType)
    SELECT 'super', column1, column2, column3, column4, column5, 'and', 'Precise'
    FROM (VALUES
        ('1 Today', 'patient', 'updated_time', '=', 'today'),
        ('2 Last 7 days', 'patient', 'updated_time', '>', 'today-7'),
        ('3 Not yet uploaded', 'generalseries', 'Status', '=', '未上传'),
        ('4 CT', 'generalseries', 'Modality', '=', 'CT'),
        ('5 MR', 'generalseries', 'Modality', '=', 'MR'))
    WHERE NOT EXISTS (SELECT 1 FROM andvancequiry);
