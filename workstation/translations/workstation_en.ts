<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>ArchiveText</name>
    <message numerus="yes">
        <source>%n image(s) not sent or not taken</source>
        <translation>
            <numerusform>%n image not sent or not taken</numerusform>
            <numerusform>%n images not sent or not taken</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n study(ies) found.</source>
        <translation>
            <numerusform>%n study found.</numerusform>
            <numerusform>%n studies found.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n answer(s) could not be read.</source>
        <translation>
            <numerusform>%n answer could not be read.</numerusform>
            <numerusform>%n answers could not be read.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n study(ies) or series asked for.</source>
        <translation>
            <numerusform>%n study or series asked for.</numerusform>
            <numerusform>%n studies or series asked for.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln image(s)</source>
        <translation>
            <numerusform>%1 of %Ln image</numerusform>
            <numerusform>%1 of %Ln images</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n image(s) of it were in the index already</source>
        <translation>
            <numerusform>%n image of it was in the index already</numerusform>
            <numerusform>%n images of it were in the index already</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The index has images of %n of them already; what is the same stays as it is.</source>
        <translation>
            <numerusform>The index has images of %n of them already; what is the same stays as it is.</numerusform>
            <numerusform>The index has images of %n of them already; what is the same stays as it is.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n patient(s) without an ID: the archive cannot be asked for their studies.</source>
        <translation>
            <numerusform>%n patient without an ID: the archive cannot be asked for their studies.</numerusform>
            <numerusform>%n patients without an ID: the archive cannot be asked for their studies.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BrowserWindow</name>
    <message numerus="yes">
        <source>The first %Ln study(ies); narrow the search to see the others</source>
        <translation>
            <numerusform>The first %Ln study; narrow the search to see the others</numerusform>
            <numerusform>The first %Ln studies; narrow the search to see the others</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln study(ies)</source>
        <translation>
            <numerusform>%Ln study</numerusform>
            <numerusform>%Ln studies</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Fetching… %Ln image(s), %1</source>
        <translation>
            <numerusform>Fetching… %Ln image, %1</numerusform>
            <numerusform>Fetching… %Ln images, %1</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CorrectionFinisher</name>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data finished</source>
        <translation>
            <numerusform>%Ln interrupted correction of patient data finished</numerusform>
            <numerusform>%Ln interrupted corrections of patient data finished</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data taken back</source>
        <translation>
            <numerusform>%Ln interrupted correction of patient data taken back</numerusform>
            <numerusform>%Ln interrupted corrections of patient data taken back</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data still wait for the service</source>
        <translation>
            <numerusform>%Ln interrupted correction of patient data still waits for the service</numerusform>
            <numerusform>%Ln interrupted corrections of patient data still wait for the service</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data could not be finished</source>
        <translation>
            <numerusform>%Ln interrupted correction of patient data could not be finished</numerusform>
            <numerusform>%Ln interrupted corrections of patient data could not be finished</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data could not be finished yet: left for the next time</source>
        <translation>
            <numerusform>%Ln interrupted correction of patient data could not be finished yet: left for the next time</numerusform>
            <numerusform>%Ln interrupted corrections of patient data could not be finished yet: left for the next time</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DeletionController</name>
    <message numerus="yes">
        <source>Deleted: %1, with %Ln file(s)</source>
        <translation>
            <numerusform>Deleted: %1, with %Ln file</numerusform>
            <numerusform>Deleted: %1, with %Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) of the store belong to no record and stay; the log names them</source>
        <translation>
            <numerusform>%Ln file of the store belongs to no record and stays; the log names it</numerusform>
            <numerusform>%Ln files of the store belong to no record and stay; the log names them</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) of the store belonged to no record; they lie in %1 for 30 days</source>
        <translation>
            <numerusform>%Ln file of the store belonged to no record; it lies in %1 for 30 days</numerusform>
            <numerusform>%Ln files of the store belonged to no record; they lie in %1 for 30 days</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>An interrupted deletion was finished; %Ln file(s) removed</source>
        <translation>
            <numerusform>An interrupted deletion was finished; %Ln file was removed</numerusform>
            <numerusform>An interrupted deletion was finished; %Ln files were removed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Of %1, %Ln image(s) still wait to be sent to %2. Once they are deleted they cannot be sent any more. Delete them?</source>
        <translation>
            <numerusform>Of %1, %Ln image still waits to be sent to %2. Once it is deleted it cannot be sent any more. Delete it?</numerusform>
            <numerusform>Of %1, %Ln images still wait to be sent to %2. Once they are deleted they cannot be sent any more. Delete them?</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Deleted: %1; %Ln file(s) could not be removed</source>
        <translation>
            <numerusform>Deleted: %1; %Ln file could not be removed</numerusform>
            <numerusform>Deleted: %1; %Ln files could not be removed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Of %1, %Ln image(s) still wait to be uploaded. Once they are deleted they cannot be uploaded any more. Delete them?</source>
        <translation>
            <numerusform>Of %1, %Ln image still waits to be uploaded. Once it is deleted it cannot be uploaded any more. Delete it?</numerusform>
            <numerusform>Of %1, %Ln images still wait to be uploaded. Once they are deleted they cannot be uploaded any more. Delete them?</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DeletionLeftovers</name>
    <message numerus="yes">
        <source>The records are deleted, but %Ln of their file(s) are still on the disk. Remove what locks them and try again.</source>
        <translation>
            <numerusform>The records are deleted, but %Ln of their files is still on the disk. Remove what locks it and try again.</numerusform>
            <numerusform>The records are deleted, but %Ln of their files are still on the disk. Remove what locks them and try again.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) still could not be removed. Remove what locks them and try again.</source>
        <translation>
            <numerusform>%Ln file still could not be removed. Remove what locks it and try again.</numerusform>
            <numerusform>%Ln files still could not be removed. Remove what locks them and try again.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ExportController</name>
    <message numerus="yes">
        <source>, %n waiting</source>
        <translation>
            <numerusform>, %n waiting</numerusform>
            <numerusform>, %n waiting</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Export: %1 of %Ln file(s)</source>
        <translation>
            <numerusform>Export: %1 of %Ln file</numerusform>
            <numerusform>Export: %1 of %Ln files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ExportProgressDialog</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln file(s), %2 of %3, %4/s</source>
        <translation>
            <numerusform>%1 of %Ln file, %2 of %3, %4/s</numerusform>
            <numerusform>%1 of %Ln files, %2 of %3, %4/s</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ExportText</name>
    <message numerus="yes">
        <source>%Ln folder(s) were made there: %1.</source>
        <translation>
            <numerusform>%Ln folder was made there: %1.</numerusform>
            <numerusform>%Ln folders were made there: %1.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Not everything went well: %Ln file(s).</source>
        <translation>
            <numerusform>Not everything went well: %Ln file.</numerusform>
            <numerusform>Not everything went well: %Ln files.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s), %1</source>
        <translation>
            <numerusform>%Ln file, %1</numerusform>
            <numerusform>%Ln files, %1</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>JobText</name>
    <message numerus="yes">
        <source>%n taken with a warning</source>
        <translation>
            <numerusform>%n taken with a warning</numerusform>
            <numerusform>%n taken with a warning</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) still to be looked at</source>
        <translation>
            <numerusform>%n file still to be looked at</numerusform>
            <numerusform>%n files still to be looked at</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) skipped: not DICOM</source>
        <translation>
            <numerusform>%Ln file skipped: not DICOM</numerusform>
            <numerusform>%Ln files skipped: not DICOM</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>LogCopyBar</name>
    <message numerus="yes">
        <source>Copying %Ln object(s)…</source>
        <translation>
            <numerusform>Copying %Ln object…</numerusform>
            <numerusform>Copying %Ln objects…</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln object(s) copied</source>
        <translation>
            <numerusform>%Ln object copied</numerusform>
            <numerusform>%Ln objects copied</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReceiveController</name>
    <message numerus="yes">
        <source>%Ln received image(s) wait for the index</source>
        <translation>
            <numerusform>%Ln received image waits for the index</numerusform>
            <numerusform>%Ln received images wait for the index</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 · %Ln refused</source>
        <translation>
            <numerusform>%1 · %Ln refused</numerusform>
            <numerusform>%1 · %Ln refused</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SeriesModel</name>
    <message numerus="yes">
        <source>%Ln image(s)</source>
        <translation>
            <numerusform>%Ln image</numerusform>
            <numerusform>%Ln images</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ThumbnailModel</name>
    <message numerus="yes">
        <source>%n image(s)</source>
        <translation>
            <numerusform>%n image</numerusform>
            <numerusform>%n images</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ThumbnailView</name>
    <message numerus="yes">
        <source>… and %n more series</source>
        <translation>
            <numerusform>… and %n more series</numerusform>
            <numerusform>… and %n more series</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TransferController</name>
    <message numerus="yes">
        <source>%Ln image(s) could not be sent</source>
        <translation>
            <numerusform>%Ln image could not be sent</numerusform>
            <numerusform>%Ln images could not be sent</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>WorkstationWindow</name>
    <message numerus="yes">
        <source>Imported %1 of %Ln file(s); %2 were there already, %3 were not taken</source>
        <translation>
            <numerusform>Imported %1 of %Ln file; %2 were there already, %3 were not taken</numerusform>
            <numerusform>Imported %1 of %Ln files; %2 were there already, %3 were not taken</numerusform>
        </translation>
    </message>
</context>
</TS>
