<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AdvancedInquiryForm</name>
    <message>
        <source>Advanced Inquiry</source>
        <translation>高级查询</translation>
    </message>
    <message>
        <source>In&amp;quiry</source>
        <translation>查询(&amp;Q)</translation>
    </message>
    <message>
        <source>New inquiry</source>
        <translation>新查询</translation>
    </message>
    <message>
        <source>The stored inquiry that is shown</source>
        <translation>当前显示的已存查询</translation>
    </message>
    <message>
        <source>Inquiry</source>
        <translation>查询</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Overwrite this inquiry with the conditions below</source>
        <translation>用下列条件覆盖此查询</translation>
    </message>
    <message>
        <source>Save inquiry</source>
        <translation>保存查询</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>另存为(&amp;A)...</translation>
    </message>
    <message>
        <source>Store the conditions under a new name</source>
        <translation>以新名称保存条件</translation>
    </message>
    <message>
        <source>Save inquiry as</source>
        <translation>查询另存为</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>新建(&amp;N)</translation>
    </message>
    <message>
        <source>Start without conditions</source>
        <translation>从无条件开始</translation>
    </message>
    <message>
        <source>De&amp;lete</source>
        <translation>删除(&amp;L)</translation>
    </message>
    <message>
        <source>Delete this stored inquiry from the index</source>
        <translation>从索引中删除此查询</translation>
    </message>
    <message>
        <source>Delete inquiry</source>
        <translation>删除查询</translation>
    </message>
    <message>
        <source>&amp;Patient and study fields</source>
        <translation>患者和检查字段(&amp;P)</translation>
    </message>
    <message>
        <source>Whose fields the list shows</source>
        <translation>列表显示哪一级的字段</translation>
    </message>
    <message>
        <source>Level of the patient and study fields</source>
        <translation>患者和检查字段的级别</translation>
    </message>
    <message>
        <source>Patient</source>
        <translation>患者</translation>
    </message>
    <message>
        <source>Study</source>
        <translation>检查</translation>
    </message>
    <message>
        <source>Select fields, or double-click one to add it at once</source>
        <translation>选择字段，或双击立即添加</translation>
    </message>
    <message>
        <source>Patient and study fields</source>
        <translation>患者和检查字段</translation>
    </message>
    <message>
        <source>S&amp;eries and image fields</source>
        <translation>序列和图像字段(&amp;E)</translation>
    </message>
    <message>
        <source>Level of the series and image fields</source>
        <translation>序列和图像字段的级别</translation>
    </message>
    <message>
        <source>Series</source>
        <translation>序列</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Series and image fields</source>
        <translation>序列和图像字段</translation>
    </message>
    <message>
        <source>A&amp;dd  &gt;</source>
        <translation>添加(&amp;D)  &gt;</translation>
    </message>
    <message>
        <source>Add the selected fields as conditions</source>
        <translation>将所选字段添加为条件</translation>
    </message>
    <message>
        <source>Add conditions</source>
        <translation>添加条件</translation>
    </message>
    <message>
        <source>&amp;Conditions</source>
        <translation>条件(&amp;C)</translation>
    </message>
    <message>
        <source>Conditions</source>
        <translation>条件</translation>
    </message>
    <message>
        <source>Double-click a cell to edit it, or go there by the arrow keys and press F2 or Enter</source>
        <translation>双击单元格进行编辑，或用方向键移到该处后按 F2 或回车键</translation>
    </message>
    <message>
        <source>Dates may be relative: today, today-7, now-2h. No value asks for records without the field.</source>
        <translation>日期可用相对值: today、today-7、now-2h。值为空表示查找该字段为空的记录。</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>移除(&amp;R)</translation>
    </message>
    <message>
        <source>Remove the selected conditions (key Delete)</source>
        <translation>移除所选条件 (Delete 键)</translation>
    </message>
    <message>
        <source>Remove conditions</source>
        <translation>移除条件</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>未保存的更改</translation>
    </message>
    <message>
        <source>The conditions have changes that have not been saved. Drop them?</source>
        <translation>条件有未保存的更改。是否放弃?</translation>
    </message>
    <message>
        <source>Nothing has been changed: the index cannot be written at the moment, perhaps because another program is writing to it. Please try again.</source>
        <translation>未作任何更改: 索引目前无法写入，可能有其他程序正在写入。请重试。</translation>
    </message>
    <message>
        <source>the name is exist</source>
        <translation>该名称已存在</translation>
    </message>
    <message>
        <source>Delete the stored inquiry &quot;%1&quot;? This cannot be undone.</source>
        <translation>是否删除查询“%1”? 此操作无法撤销。</translation>
    </message>
</context>
<context>
    <name>ConditionModel</name>
    <message>
        <source>Group</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>字段</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>符号</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Logic</source>
        <translation>逻辑</translation>
    </message>
    <message>
        <source>QueryType</source>
        <translation>查询方式</translation>
    </message>
    <message>
        <source>Dates may be relative: today, today-7, now-2h.
No value asks for records without the field.</source>
        <translation>日期可用相对值: today、today-7、now-2h。
值为空表示查找该字段为空的记录。</translation>
    </message>
    <message>
        <source>Joins the condition with the next one of its group</source>
        <translation>将此条件与同组的下一条件连接</translation>
    </message>
    <message>
        <source>Precise compares as the symbol says, Fuzzy finds the value anywhere in the text</source>
        <translation>Precise 按符号比较，Fuzzy 在文本任意位置查找该值</translation>
    </message>
</context>
<context>
    <name>DeletionNotice</name>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Deleting the selected records and their files…</source>
        <translation>正在删除所选记录及其文件…</translation>
    </message>
    <message>
        <source>Progress of the deletion</source>
        <translation>删除进度</translation>
    </message>
    <message>
        <source>Waiting for somebody else who writes to the index…</source>
        <translation>正在等待其他程序完成对索引的写入…</translation>
    </message>
</context>
<context>
    <name>DirectoryViewer</name>
    <message>
        <source>确定</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Folders</source>
        <translation>文件夹</translation>
    </message>
</context>
<context>
    <name>ImageformatForm</name>
    <message>
        <source>Form</source>
        <translation>窗体</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>图像</translation>
    </message>
</context>
<context>
    <name>InquiryProblemText</name>
    <message>
        <source>There is no stored inquiry &quot;%1&quot;.</source>
        <translation>没有名为“%1”的查询。</translation>
    </message>
    <message>
        <source>The inquiry has no condition that names a field.</source>
        <translation>该查询没有任何指明字段的条件。</translation>
    </message>
    <message>
        <source>The inquiry asks for &quot;%1&quot;, which is no kind of record.</source>
        <translation>该查询针对“%1”，但没有此类记录。</translation>
    </message>
    <message>
        <source>The inquiry asks for a field &quot;%1&quot; that the records do not have.</source>
        <translation>该查询使用了记录中没有的字段“%1”。</translation>
    </message>
    <message>
        <source>The inquiry compares %2 by &quot;%1&quot;, which is no comparison.</source>
        <translation>该查询用“%1”比较 %2，但这不是比较符号。</translation>
    </message>
    <message>
        <source>The inquiry joins %2 to the next condition by &quot;%1&quot; instead of &quot;and&quot; or &quot;or&quot;.</source>
        <translation>该查询用“%1”将 %2 与下一条件连接，应使用 &quot;and&quot; 或 &quot;or&quot;。</translation>
    </message>
    <message>
        <source>The inquiry asks for %2 by &quot;%1&quot; instead of &quot;Precise&quot; or &quot;Fuzzy&quot;.</source>
        <translation>该查询以“%1”方式查找 %2，应使用 &quot;Precise&quot; 或 &quot;Fuzzy&quot;。</translation>
    </message>
    <message>
        <source>The inquiry compares %2, which holds numbers, with &quot;%1&quot;.</source>
        <translation>该查询将数值字段 %2 与“%1”比较。</translation>
    </message>
    <message>
        <source>The inquiry compares %2, which holds dates or times, with &quot;%1&quot;.</source>
        <translation>该查询将日期或时间字段 %2 与“%1”比较。</translation>
    </message>
    <message>
        <source>The inquiry failed: %1</source>
        <translation>查询失败: %1</translation>
    </message>
</context>
<context>
    <name>PatientForm</name>
    <message>
        <source>Form</source>
        <translation>窗体</translation>
    </message>
    <message>
        <source>Patients</source>
        <translation>患者</translation>
    </message>
</context>
<context>
    <name>PatientManagerMainWindow</name>
    <message>
        <source>MainWindow</source>
        <translation>主窗口</translation>
    </message>
    <message>
        <source>toolBar</source>
        <translation>工具栏</translation>
    </message>
    <message>
        <source>Database</source>
        <translation>数据库</translation>
    </message>
    <message>
        <source>loadFolder</source>
        <translation>加载文件夹</translation>
    </message>
    <message>
        <source>选择文件路径</source>
        <translation>选择文件路径</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>刷新</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>SettingField</source>
        <translation>配置字段</translation>
    </message>
    <message>
        <source>配置字段</source>
        <translation>配置字段</translation>
    </message>
    <message>
        <source>Anonymize</source>
        <translation>匿名化</translation>
    </message>
    <message>
        <source>submit</source>
        <translation>提交</translation>
    </message>
    <message>
        <source>revertall</source>
        <translation>全部还原</translation>
    </message>
    <message>
        <source>saveDicom</source>
        <translation>保存 DICOM</translation>
    </message>
    <message>
        <source>保存数据到指定路径</source>
        <translation>保存数据到指定路径</translation>
    </message>
    <message>
        <source>uploadCloudData</source>
        <translation>上传数据</translation>
    </message>
    <message>
        <source>上传数据</source>
        <translation>上传数据</translation>
    </message>
    <message>
        <source>downloadCloudData</source>
        <translation>下载数据</translation>
    </message>
    <message>
        <source>download Cloud Data</source>
        <translation>下载云端数据</translation>
    </message>
    <message>
        <source>patientInfoEdit</source>
        <translation>编辑患者信息</translation>
    </message>
    <message>
        <source>sendDicomFiles</source>
        <translation>发送 DICOM 文件</translation>
    </message>
    <message>
        <source>Send Dicom Files</source>
        <translation>发送 DICOM 文件</translation>
    </message>
    <message>
        <source>cloudBrower</source>
        <translation>云端浏览</translation>
    </message>
    <message>
        <source>test</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>发送</source>
        <translation>发送</translation>
    </message>
    <message>
        <source>确定要发送选择的病人数据吗?</source>
        <translation>确定要发送选择的病人数据吗?</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>Import everything below the root folder of this computer?</source>
        <translation>是否导入此计算机根目录下的所有内容?</translation>
    </message>
    <message>
        <source>PatientTree</source>
        <translation>患者树</translation>
    </message>
    <message>
        <source>The deletion could not be finished: %1
The next start finishes it.</source>
        <translation>删除未能完成: %1
下次启动时会继续完成。</translation>
    </message>
    <message>
        <source>Nothing was deleted: %1</source>
        <translation>未删除任何内容: %1</translation>
    </message>
    <message>
        <source>删除警告</source>
        <translation>删除警告</translation>
    </message>
    <message>
        <source>数据正在上传中，请勿删除!</source>
        <translation>数据正在上传中，请勿删除!</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>请选择至少一个病人数据!</source>
        <translation>请选择至少一个病人数据!</translation>
    </message>
    <message>
        <source>确定要删除病人数据吗?</source>
        <translation>确定要删除病人数据吗?</translation>
    </message>
    <message>
        <source>请选择要保存的病人数据!</source>
        <translation>请选择要保存的病人数据!</translation>
    </message>
    <message>
        <source>系统信息</source>
        <translation>系统信息</translation>
    </message>
    <message>
        <source>The cloud imaging service is not available on this computer.</source>
        <translation>本机无法使用云端影像服务。</translation>
    </message>
    <message>
        <source>请登录云端用户!</source>
        <translation>请登录云端用户!</translation>
    </message>
    <message>
        <source>System Hints</source>
        <translation>系统提示</translation>
    </message>
    <message>
        <source>Please choose the STUDY you want to edit!</source>
        <translation>请选择要编辑的检查！</translation>
    </message>
    <message>
        <source>上传</source>
        <translation>上传</translation>
    </message>
    <message>
        <source>确定要上传病人数据吗?</source>
        <translation>确定要上传病人数据吗?</translation>
    </message>
    <message>
        <source>Nothing is uploaded: nobody has signed in to the cloud.</source>
        <translation>未上传：没有用户登录云端。</translation>
    </message>
</context>
<context>
    <name>PatientQueryForm</name>
    <message>
        <source>Form</source>
        <translation>窗体</translation>
    </message>
    <message>
        <source>Show or hide this section</source>
        <translation>显示或隐藏此部分</translation>
    </message>
    <message>
        <source>Show or hide the patient query</source>
        <translation>显示或隐藏患者查询</translation>
    </message>
    <message>
        <source>Double click: float or dock the panel</source>
        <translation>双击: 浮动或停靠面板</translation>
    </message>
    <message>
        <source>Patient Query</source>
        <translation>患者查询</translation>
    </message>
    <message>
        <source>Float the panel</source>
        <translation>浮动面板</translation>
    </message>
    <message>
        <source>Part of the filter: the name</source>
        <translation>筛选条件: 姓名</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>姓名</translation>
    </message>
    <message>
        <source>As people write it: any part of the name, in any order</source>
        <translation>按通常写法: 姓名的任意部分，顺序不限</translation>
    </message>
    <message>
        <source>Patient name</source>
        <translation>患者姓名</translation>
    </message>
    <message>
        <source>Part of the filter: the patient ID</source>
        <translation>筛选条件: 患者编号</translation>
    </message>
    <message>
        <source>Patient ID</source>
        <translation>患者编号</translation>
    </message>
    <message>
        <source>The whole patient ID</source>
        <translation>完整的患者编号</translation>
    </message>
    <message>
        <source>The index keeps no ID card numbers</source>
        <translation>索引不保存身份证号</translation>
    </message>
    <message>
        <source>IDCardNum</source>
        <translation>身份证号</translation>
    </message>
    <message>
        <source>ID card number</source>
        <translation>身份证号</translation>
    </message>
    <message>
        <source>Part of the filter: the first day</source>
        <translation>筛选条件: 起始日期</translation>
    </message>
    <message>
        <source>In No.</source>
        <translation>起始日期</translation>
    </message>
    <message>
        <source>Updated on this day or later</source>
        <translation>在此日或之后更新</translation>
    </message>
    <message>
        <source>First day of the update time</source>
        <translation>更新时间的起始日期</translation>
    </message>
    <message>
        <source>yyyy-MM-dd</source>
        <translation>yyyy-MM-dd</translation>
    </message>
    <message>
        <source>Part of the filter: the last day</source>
        <translation>筛选条件: 截止日期</translation>
    </message>
    <message>
        <source>Out No.</source>
        <translation>截止日期</translation>
    </message>
    <message>
        <source>Updated on this day or before</source>
        <translation>在此日或之前更新</translation>
    </message>
    <message>
        <source>Last day of the update time</source>
        <translation>更新时间的截止日期</translation>
    </message>
    <message>
        <source>Show the patients that the checked rows find</source>
        <translation>显示符合勾选条件的患者</translation>
    </message>
    <message>
        <source>Inquiry</source>
        <translation>查询</translation>
    </message>
    <message>
        <source>Hand the tables to the stored inquiries of the patient tree, or take them back</source>
        <translation>将表格交给患者树的已存查询，或收回</translation>
    </message>
    <message>
        <source>Advance Inquiry</source>
        <translation>高级查询</translation>
    </message>
    <message>
        <source>Show or hide the thumbnails</source>
        <translation>显示或隐藏缩略图</translation>
    </message>
    <message>
        <source>Thumbnail</source>
        <translation>缩略图</translation>
    </message>
    <message>
        <source>Show or hide the applications</source>
        <translation>显示或隐藏应用程序</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>应用程序</translation>
    </message>
    <message>
        <source>Joint</source>
        <translation>关节</translation>
    </message>
    <message>
        <source>图像对比</source>
        <translation>图像对比</translation>
    </message>
    <message>
        <source>SWI</source>
        <translation>SWI</translation>
    </message>
    <message>
        <source>SWIM</source>
        <translation>SWIM</translation>
    </message>
    <message>
        <source>Infarction</source>
        <translation>梗死</translation>
    </message>
    <message>
        <source>ICH</source>
        <translation>脑出血</translation>
    </message>
    <message>
        <source>Vessel</source>
        <translation>血管</translation>
    </message>
    <message>
        <source>Flow</source>
        <translation>血流</translation>
    </message>
    <message>
        <source>PatientName = &apos;%1&apos;</source>
        <translation>PatientName = &apos;%1&apos;</translation>
    </message>
    <message>
        <source>PatientID = &apos;%1&apos;</source>
        <translation>PatientID = &apos;%1&apos;</translation>
    </message>
    <message>
        <source>updated_time &gt;= &apos;%1&apos;</source>
        <translation>updated_time &gt;= &apos;%1&apos;</translation>
    </message>
    <message>
        <source>updated_time &lt;= &apos;%1&apos;</source>
        <translation>updated_time &lt;= &apos;%1&apos;</translation>
    </message>
</context>
<context>
    <name>PatientTreeForm</name>
    <message>
        <source>Form</source>
        <translation>窗体</translation>
    </message>
    <message>
        <source>Double click: float or dock the panel</source>
        <translation>双击: 浮动或停靠面板</translation>
    </message>
    <message>
        <source>Patient tree</source>
        <translation>患者树</translation>
    </message>
    <message>
        <source>Choose the columns that are shown</source>
        <translation>选择要显示的列</translation>
    </message>
    <message>
        <source>Choose columns</source>
        <translation>选择列</translation>
    </message>
    <message>
        <source>Query Terms</source>
        <translation>查询条件</translation>
    </message>
    <message>
        <source>Stored inquiries</source>
        <translation>已存查询</translation>
    </message>
    <message>
        <source>Run the stored inquiry</source>
        <translation>执行已存查询</translation>
    </message>
    <message>
        <source>Query</source>
        <translation>查询</translation>
    </message>
    <message>
        <source>Edit stored inquiries</source>
        <translation>编辑已存查询</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Show All Patients</source>
        <translation>显示所有患者</translation>
    </message>
    <message>
        <source>Patient</source>
        <translation>患者</translation>
    </message>
    <message>
        <source>Show All Studies</source>
        <translation>显示所有检查</translation>
    </message>
    <message>
        <source>Study</source>
        <translation>检查</translation>
    </message>
    <message>
        <source>Show All Series</source>
        <translation>显示所有序列</translation>
    </message>
    <message>
        <source>Series</source>
        <translation>序列</translation>
    </message>
    <message>
        <source>Click: show what belongs to the record; double click: choose it</source>
        <translation>单击: 显示该记录所含内容；双击: 选择该记录</translation>
    </message>
    <message>
        <source>Patients, studies and series</source>
        <translation>患者、检查和序列</translation>
    </message>
    <message>
        <source>Stored inquiry that &quot;Query&quot; runs</source>
        <translation>“查询”所执行的已存查询</translation>
    </message>
    <message>
        <source>The inquiry finds nothing.</source>
        <translation>查询没有找到任何记录。</translation>
    </message>
</context>
<context>
    <name>PatientTreeView</name>
    <message>
        <source>(no name)</source>
        <translation>（无姓名）</translation>
    </message>
</context>
<context>
    <name>RecordForm</name>
    <message>
        <source>Cached Table</source>
        <translation>缓存表</translation>
    </message>
    <message>
        <source>The database reported an error: %1</source>
        <translation>数据库报告错误: %1</translation>
    </message>
</context>
<context>
    <name>RecordSummary</name>
    <message>
        <source>1 image</source>
        <translation>1 幅图像</translation>
    </message>
    <message>
        <source>%1 images</source>
        <translation>%1 幅图像</translation>
    </message>
</context>
<context>
    <name>SeriesForm</name>
    <message>
        <source>Form</source>
        <translation>窗体</translation>
    </message>
    <message>
        <source>Series</source>
        <translation>序列</translation>
    </message>
</context>
<context>
    <name>StudyForm</name>
    <message>
        <source>Form</source>
        <translation>窗体</translation>
    </message>
    <message>
        <source>Studies</source>
        <translation>检查</translation>
    </message>
</context>
<context>
    <name>UploadFailureModel</name>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Patient</source>
        <translation>患者</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>原因</translation>
    </message>
</context>
<context>
    <name>UploadProgressForm</name>
    <message>
        <source>Uploads to the Cloud</source>
        <translation>上传到云端</translation>
    </message>
    <message>
        <source>Uploads are waiting for you to sign in to the cloud.</source>
        <translation>有上传任务正在等待您登录云端。</translation>
    </message>
    <message>
        <source>Sign in, so that the uploads that wait go on</source>
        <translation>登录后，等待中的上传任务将继续</translation>
    </message>
    <message>
        <source>Sign in to the cloud</source>
        <translation>登录云端</translation>
    </message>
    <message>
        <source>&amp;Sign In…</source>
        <translation>登录(&amp;S)…</translation>
    </message>
    <message>
        <source>The uploads, a row each</source>
        <translation>上传任务，每行一个</translation>
    </message>
    <message>
        <source>Uploads</source>
        <translation>上传任务</translation>
    </message>
    <message>
        <source>Failed files of the upload that was heard of last</source>
        <translation>最近更新的上传任务中的失败文件</translation>
    </message>
    <message>
        <source>Files that could not be stored, and why</source>
        <translation>未能存储的文件及原因</translation>
    </message>
    <message>
        <source>Files that could not be stored</source>
        <translation>未能存储的文件</translation>
    </message>
    <message>
        <source>Look no further, and upload nothing of this folder</source>
        <translation>不再继续查找，不上传此文件夹中的任何文件</translation>
    </message>
    <message>
        <source>Stop looking through the folder</source>
        <translation>停止查找文件夹</translation>
    </message>
    <message>
        <source>S&amp;top Looking</source>
        <translation>停止查找(&amp;T)</translation>
    </message>
    <message>
        <source>Upload all files below a folder</source>
        <translation>上传文件夹及其下级的所有文件</translation>
    </message>
    <message>
        <source>Upload a folder</source>
        <translation>上传文件夹</translation>
    </message>
    <message>
        <source>select floders</source>
        <translation>选择文件夹</translation>
    </message>
    <message>
        <source>Upload again what has failed</source>
        <translation>重新上传失败的文件</translation>
    </message>
    <message>
        <source>Retry what has failed</source>
        <translation>重试失败项</translation>
    </message>
    <message>
        <source>&amp;Retry Failed</source>
        <translation>重试失败项(&amp;R)</translation>
    </message>
    <message>
        <source>End the upload of the chosen row; what the service has stored stays there</source>
        <translation>结束所选行的上传；服务已存储的内容会保留</translation>
    </message>
    <message>
        <source>Cancel the chosen upload</source>
        <translation>取消所选上传</translation>
    </message>
    <message>
        <source>Ca&amp;ncel Upload</source>
        <translation>取消上传(&amp;N)</translation>
    </message>
    <message>
        <source>Close this window; uploads go on</source>
        <translation>关闭此窗口；上传会继续</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
    <message>
        <source>Failed: %1 of %2</source>
        <translation>失败：%1 / %2</translation>
    </message>
    <message>
        <source>患者id</source>
        <translation>患者id</translation>
    </message>
    <message>
        <source>图像数目</source>
        <translation>图像数目</translation>
    </message>
    <message>
        <source>上传成功</source>
        <translation>上传成功</translation>
    </message>
    <message>
        <source>上传失败</source>
        <translation>上传失败</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>速度</translation>
    </message>
    <message>
        <source>Time left</source>
        <translation>剩余时间</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>No uploads</source>
        <translation>没有上传任务</translation>
    </message>
    <message numerus="yes">
        <source>Looking through the folder: %Ln file(s) found</source>
        <translation>
            <numerusform>正在查找文件夹：已找到 %Ln 个文件</numerusform>
        </translation>
    </message>
    <message>
        <source>Looking through the folder</source>
        <translation>正在查找文件夹</translation>
    </message>
    <message>
        <source>There are no files in %1</source>
        <translation>%1 中没有文件</translation>
    </message>
    <message>
        <source>Stored: %1</source>
        <translation>已存储：%1</translation>
    </message>
    <message>
        <source>Nothing is being uploaded.</source>
        <translation>当前没有上传任务。</translation>
    </message>
    <message>
        <source>N&amp;ot stored: %1</source>
        <translation>未存储(&amp;O)：%1</translation>
    </message>
    <message>
        <source>Take the uploads that have ended off the list</source>
        <translation>从列表中移除已结束的上传</translation>
    </message>
    <message>
        <source>Clear finished uploads</source>
        <translation>清除已结束的上传</translation>
    </message>
    <message>
        <source>C&amp;lear Finished</source>
        <translation>清除已结束的(&amp;L)</translation>
    </message>
    <message>
        <source>Re&amp;move from the List</source>
        <translation>从列表中移除(&amp;M)</translation>
    </message>
</context>
<context>
    <name>UploadRows</name>
    <message>
        <source>%1 %</source>
        <comment>what part of an upload is stored</comment>
        <translation>%1%</translation>
    </message>
</context>
<context>
    <name>UploadText</name>
    <message>
        <source>Finished, with failures</source>
        <translation>已完成，部分失败</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>已完成</translation>
    </message>
    <message>
        <source>Looking at the files</source>
        <translation>正在检查文件</translation>
    </message>
    <message>
        <source>Uploading</source>
        <translation>正在上传</translation>
    </message>
    <message>
        <source>Trying again</source>
        <translation>正在重试</translation>
    </message>
    <message>
        <source>Trying again: %1</source>
        <comment>why</comment>
        <translation>正在重试：%1</translation>
    </message>
    <message>
        <source>Waiting for you to sign in</source>
        <translation>等待您登录</translation>
    </message>
    <message>
        <source>Paused: another program uploads, or the index cannot be written</source>
        <translation>已暂停：其他程序正在上传，或索引无法写入</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>已取消</translation>
    </message>
    <message>
        <source>%1/s</source>
        <comment>so many bytes a second</comment>
        <translation>%1/秒</translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln file(s), %2 of %3</source>
        <comment>files, and bytes</comment>
        <translation>
            <numerusform>%1 / %Ln 个文件，%2 / %3</numerusform>
        </translation>
    </message>
    <message>
        <source>The file is gone, empty, or cannot be read</source>
        <translation>文件不存在、为空或无法读取</translation>
    </message>
    <message>
        <source>No DICOM object of a study</source>
        <translation>不是属于检查的 DICOM 对象</translation>
    </message>
    <message>
        <source>Its record was deleted while it waited</source>
        <translation>等待期间其记录已被删除</translation>
    </message>
    <message>
        <source>Refused by the service</source>
        <translation>被服务拒绝</translation>
    </message>
    <message>
        <source>The service did not take it</source>
        <translation>服务未接收</translation>
    </message>
    <message>
        <source>The service took it but did not confirm that it has it</source>
        <translation>服务已接收，但未确认已存储</translation>
    </message>
</context>
<context>
    <name>tableInfoForm</name>
    <message>
        <source>Form</source>
        <translation>窗体</translation>
    </message>
    <message>
        <source>Information:</source>
        <translation>信息:</translation>
    </message>
    <message>
        <source>What the tables show</source>
        <translation>表格所显示的内容</translation>
    </message>
</context>
</TS>
