<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>ImportReportText</name>
    <message numerus="yes">
        <source>Needs a password, %Ln file(s) skipped</source>
        <translation>
            <numerusform>Needs a password, %Ln file skipped</numerusform>
            <numerusform>Needs a password, %Ln files skipped</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>LauncherSettings</name>
    <message>
        <source>图像对比</source>
        <translation>Comparison</translation>
    </message>
</context>
<context>
    <name>SendJobList</name>
    <message numerus="yes">
        <source>%n taken with a warning</source>
        <translation>
            <numerusform>%n taken with a warning</numerusform>
            <numerusform>%n taken with a warning</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n skipped: no DICOM file</source>
        <translation>
            <numerusform>%n skipped: not a DICOM file</numerusform>
            <numerusform>%n skipped: not DICOM files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SendProgressPanel</name>
    <message numerus="yes">
        <source>%n destination(s) cannot be reached now</source>
        <translation>
            <numerusform>%n destination cannot be reached now</numerusform>
            <numerusform>%n destinations cannot be reached now</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TransferText</name>
    <message numerus="yes">
        <source>%1 and %Ln more</source>
        <comment>names of patients</comment>
        <translation>
            <numerusform>%1 and %Ln more</numerusform>
            <numerusform>%1 and %Ln more</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln image(s) sent</source>
        <translation>
            <numerusform>%1 of %Ln image sent</numerusform>
            <numerusform>%1 of %Ln images sent</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>dicomSend</name>
    <message numerus="yes">
        <source>%Ln patient(s)</source>
        <translation>
            <numerusform>%Ln patient</numerusform>
            <numerusform>%Ln patients</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s)</source>
        <translation>
            <numerusform>%Ln file</numerusform>
            <numerusform>%Ln files</numerusform>
        </translation>
    </message>
</context>
</TS>
