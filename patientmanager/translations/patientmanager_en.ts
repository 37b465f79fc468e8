<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>DirectoryViewer</name>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>PatientManagerMainWindow</name>
    <message>
        <source>选择文件路径</source>
        <translation>Choose a folder to import</translation>
    </message>
    <message>
        <source>刷新</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>配置字段</source>
        <translation>Choose columns</translation>
    </message>
    <message>
        <source>保存数据到指定路径</source>
        <translation>Save data to a folder</translation>
    </message>
    <message>
        <source>上传数据</source>
        <translation>Upload data</translation>
    </message>
    <message>
        <source>发送</source>
        <translation>Send</translation>
    </message>
    <message>
        <source>确定要发送选择的病人数据吗?</source>
        <translation>Send the data of the selected patients?</translation>
    </message>
    <message>
        <source>删除警告</source>
        <translation>Deletion Warning</translation>
    </message>
    <message>
        <source>数据正在上传中，请勿删除!</source>
        <translation>Data are being uploaded. Do not delete now.</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>请选择至少一个病人数据!</source>
        <translation>Select the data of at least one patient.</translation>
    </message>
    <message>
        <source>确定要删除病人数据吗?</source>
        <translation>Delete the patient data?</translation>
    </message>
    <message>
        <source>请选择要保存的病人数据!</source>
        <translation>Select the patient data to save.</translation>
    </message>
</context>
<context>
    <name>PatientQueryForm</name>
    <message>
        <source>图像对比</source>
        <translation>Comparison</translation>
    </message>
</context>
</TS>
