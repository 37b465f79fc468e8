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
</TS>
