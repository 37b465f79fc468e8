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
    <message>
        <source>系统信息</source>
        <translation>System Information</translation>
    </message>
    <message>
        <source>请登录云端用户!</source>
        <translation>Please sign in to the cloud.</translation>
    </message>
    <message>
        <source>上传</source>
        <translation>Upload</translation>
    </message>
    <message>
        <source>确定要上传病人数据吗?</source>
        <translation>Upload the data of the selected patients?</translation>
    </message>
</context>
<context>
    <name>PatientQueryForm</name>
    <message>
        <source>图像对比</source>
        <translation>Comparison</translation>
    </message>
</context>
<context>
    <name>UploadProgressForm</name>
    <message>
        <source>患者id</source>
        <translation>Patient ID</translation>
    </message>
    <message>
        <source>图像数目</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>上传成功</source>
        <translation>Uploaded</translation>
    </message>
    <message>
        <source>上传失败</source>
        <translation>Failed</translation>
    </message>
    <message numerus="yes">
        <source>Looking through the folder: %Ln file(s) found</source>
        <translation>
            <numerusform>Looking through the folder: %Ln file found</numerusform>
            <numerusform>Looking through the folder: %Ln files found</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>UploadText</name>
    <message numerus="yes">
        <source>%1 of %Ln file(s), %2 of %3</source>
        <comment>files, and bytes</comment>
        <translation>
            <numerusform>%1 of %Ln file, %2 of %3</numerusform>
            <numerusform>%1 of %Ln files, %2 of %3</numerusform>
        </translation>
    </message>
</context>
</TS>
