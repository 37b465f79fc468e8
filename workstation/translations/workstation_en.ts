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
</context>
<context>
    <name>DeletionController</name>
    <message numerus="yes">
        <source>Deleted with %n file(s)</source>
        <translation>
            <numerusform>Deleted with %n file</numerusform>
            <numerusform>Deleted with %n files</numerusform>
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
</context>
<context>
    <name>ExportText</name>
    <message numerus="yes">
        <source>Not everything went well: %n file(s).</source>
        <translation>
            <numerusform>Not everything went well: %n file.</numerusform>
            <numerusform>Not everything went well: %n files.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s), %1</source>
        <translation>
            <numerusform>%n file, %1</numerusform>
            <numerusform>%n files, %1</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>JobText</name>
    <message numerus="yes">
        <source>%n file(s) skipped: not DICOM</source>
        <translation>
            <numerusform>%n file skipped: not DICOM</numerusform>
            <numerusform>%n files skipped: not DICOM</numerusform>
        </translation>
    </message>
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
        <source>%n image(s) could not be sent</source>
        <translation>
            <numerusform>%n image could not be sent</numerusform>
            <numerusform>%n images could not be sent</numerusform>
        </translation>
    </message>
</context>
</TS>
