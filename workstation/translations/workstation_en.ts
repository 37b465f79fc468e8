<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
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
</TS>
