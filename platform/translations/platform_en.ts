<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>AnonymizeText</name>
    <message numerus="yes">
        <source>Names or faces may be seen in the picture itself of %n image(s).</source>
        <translation>
            <numerusform>Names or faces may be seen in the picture itself of %n image.</numerusform>
            <numerusform>Names or faces may be seen in the picture itself of %n images.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n anonymous copy(ies) made.</source>
        <translation>
            <numerusform>%n anonymous copy made.</numerusform>
            <numerusform>%n anonymous copies made.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) could not be copied.</source>
        <translation>
            <numerusform>%n file could not be copied.</numerusform>
            <numerusform>%n files could not be copied.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n copy(ies) left out because names may be seen in the picture.</source>
        <translation>
            <numerusform>%n copy left out because names may be seen in the picture.</numerusform>
            <numerusform>%n copies left out because names may be seen in the picture.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) were replaced by an empty one.</source>
        <translation>
            <numerusform>%n document was replaced by an empty one.</numerusform>
            <numerusform>%n documents were replaced by an empty one.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n copy(ies) of an earlier run, made otherwise, were in the index and stay there instead. Delete them first to have the new ones.</source>
        <translation>
            <numerusform>%n copy of an earlier run, made otherwise, was in the index and stays there instead. Delete it first to have the new one.</numerusform>
            <numerusform>%n copies of an earlier run, made otherwise, were in the index and stay there instead. Delete them first to have the new ones.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n copy(ies) that the index had not taken have been removed.</source>
        <translation>
            <numerusform>%n copy that the index had not taken has been removed.</numerusform>
            <numerusform>%n copies that the index had not taken have been removed.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n ID(s) belonged to several patients, who were told apart by name and birth date. Their pseudonyms are others than in a run without that.</source>
        <translation>
            <numerusform>%n ID belonged to several patients, who were told apart by name and birth date. Their pseudonyms are others than in a run without that.</numerusform>
            <numerusform>%n IDs belonged to several patients, who were told apart by name and birth date. Their pseudonyms are others than in a run without that.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ChangeModel</name>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n item</numerusform>
            <numerusform>%n items</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n byte(s)</source>
        <translation>
            <numerusform>%n byte</numerusform>
            <numerusform>%n bytes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ChangePreview</name>
    <message numerus="yes">
        <source>%n attribute(s) change.</source>
        <translation>
            <numerusform>%n attribute changes.</numerusform>
            <numerusform>%n attributes change.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n text(s) stay as they are: read them.</source>
        <translation>
            <numerusform>%n text stays as it is: read it.</numerusform>
            <numerusform>%n texts stay as they are: read them.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CloudStudyModel</name>
    <message numerus="yes">
        <source>%n image(s)</source>
        <translation>
            <numerusform>%n image</numerusform>
            <numerusform>%n images</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CorrectionChoices</name>
    <message numerus="yes">
        <source>&amp;All %Ln study(ies) of the patient</source>
        <translation>
            <numerusform>&amp;All %Ln study of the patient</numerusform>
            <numerusform>&amp;All %Ln studies of the patient</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CorrectionText</name>
    <message numerus="yes">
        <source>%Ln file(s) of this study in the workstation&apos;s store are corrected, too.</source>
        <translation>
            <numerusform>%Ln file of this study in the workstation&apos;s store is corrected, too.</numerusform>
            <numerusform>%Ln files of this study in the workstation&apos;s store are corrected, too.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) of this study lie elsewhere and keep the old values: what is exported, sent or uploaded from here has them.</source>
        <translation>
            <numerusform>%Ln file of this study lies elsewhere and keeps the old values: what is exported, sent or uploaded from here has them.</numerusform>
            <numerusform>%Ln files of this study lie elsewhere and keep the old values: what is exported, sent or uploaded from here has them.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) on this computer corrected.</source>
        <translation>
            <numerusform>%Ln file on this computer corrected.</numerusform>
            <numerusform>%Ln files on this computer corrected.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) that lie elsewhere keep the old values.</source>
        <translation>
            <numerusform>%Ln file that lies elsewhere keeps the old values.</numerusform>
            <numerusform>%Ln files that lie elsewhere keep the old values.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) could not be written and keep the old values, such as %1</source>
        <translation>
            <numerusform>%Ln file could not be written and keeps the old values: %1</numerusform>
            <numerusform>%Ln files could not be written and keep the old values, such as %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln image(s) of the service corrected and read back.</source>
        <translation>
            <numerusform>%Ln image of the service corrected and read back.</numerusform>
            <numerusform>%Ln images of the service corrected and read back.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DownloadCloudDataForm</name>
    <message numerus="yes">
        <source>Stopped. Found so far: %n study(s)</source>
        <translation>
            <numerusform>Stopped. Found so far: %n study</numerusform>
            <numerusform>Stopped. Found so far: %n studies</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The first %n study(s) are shown; the service has more. Ask more closely to see them.</source>
        <translation>
            <numerusform>The first %n study is shown; the service has more. Ask more closely to see them.</numerusform>
            <numerusform>The first %n studies are shown; the service has more. Ask more closely to see them.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Found: %n study(s)</source>
        <translation>
            <numerusform>Found: %n study</numerusform>
            <numerusform>Found: %n studies</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DownloadText</name>
    <message numerus="yes">
        <source>Done; %n image(s) kept aside, the index has others in their place or cannot read them</source>
        <translation>
            <numerusform>Done; %n image kept aside, the index has another in its place or cannot read it</numerusform>
            <numerusform>Done; %n images kept aside, the index has others in their place or cannot read them</numerusform>
        </translation>
    </message>
</context>
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
    <name>PatientEditor</name>
    <message numerus="yes">
        <source>The service has %Ln image(s) of this study.</source>
        <translation>
            <numerusform>The service has %Ln image of this study.</numerusform>
            <numerusform>The service has %Ln images of this study.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RecordPicker</name>
    <message numerus="yes">
        <source>Only %n patient(s) are listed. Type a name or an ID to find others.</source>
        <translation>
            <numerusform>Only %n patient is listed. Type a name or an ID to find others.</numerusform>
            <numerusform>Only %n patients are listed. Type a name or an ID to find others.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n study(ies) are ticked.</source>
        <translation>
            <numerusform>%n study is ticked.</numerusform>
            <numerusform>%n studies are ticked.</numerusform>
        </translation>
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
