<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>LauncherSettings</name>
    <message>
        <source>图像对比</source>
        <translation>Comparison</translation>
    </message>
</context>
<context>
    <name>SendProgressPanel</name>
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
    <name>dicomSend</name>
    <message numerus="yes">
        <source>%n patient(s)</source>
        <translation>
            <numerusform>%n patient</numerusform>
            <numerusform>%n patients</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n file</numerusform>
            <numerusform>%n files</numerusform>
        </translation>
    </message>
</context>
</TS>
