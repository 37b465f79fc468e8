<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AppearancePage</name>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>跟随系统</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>&amp;Colours:</source>
        <translation>颜色(&amp;C):</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>语言(&amp;L):</translation>
    </message>
    <message>
        <source>For you alone. Takes effect at once; another language waits for what runs.</source>
        <translation>仅对您生效。立即生效；切换语言会等待正在进行的工作结束。</translation>
    </message>
</context>
<context>
    <name>ApplicationsPage</name>
    <message>
        <source>Applications</source>
        <translation>应用程序</translation>
    </message>
    <message>
        <source>A&amp;pplication:</source>
        <translation>应用(&amp;P):</translation>
    </message>
    <message>
        <source>P&amp;rogram:</source>
        <translation>程序(&amp;R):</translation>
    </message>
    <message>
        <source>Ar&amp;guments, one a line:</source>
        <translation>参数(&amp;G)，每行一个:</translation>
    </message>
    <message>
        <source>In the arguments stand for what is selected: {files} its files, one argument each; {fileList} a text file with a path a line; {studyUID}, {seriesUID}, {patientID}; and {index} for the index file. {workstation} is this program. An empty program means none. Takes effect at the next start of the application.</source>
        <translation>参数中可用下列占位符表示所选内容：{files} 为其文件，每个文件一个参数；{fileList} 为每行一个路径的文本文件；{studyUID}、{seriesUID}、{patientID}；{index} 为索引文件。{workstation} 为本程序。程序留空表示未配置。下次启动该应用时生效。</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>程序</translation>
    </message>
    <message>
        <source>Bro&amp;wse…</source>
        <translation>浏览(&amp;W)…</translation>
    </message>
    <message>
        <source>Choose the Program</source>
        <translation>选择程序</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
</context>
<context>
    <name>ChoicePage</name>
    <message>
        <source>Imports</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>What an import does with the files</source>
        <translation>导入时如何处理文件</translation>
    </message>
    <message>
        <source>Reference files where they are</source>
        <translation>引用原位置的文件</translation>
    </message>
    <message>
        <source>Copy files into the store</source>
        <translation>将文件复制到存储区</translation>
    </message>
    <message>
        <source>Ask at each import</source>
        <translation>每次导入时询问</translation>
    </message>
    <message>
        <source>Other content under a known identifier</source>
        <translation>已有标识符下的不同内容</translation>
    </message>
    <message>
        <source>When an import brings other bytes for an image of the index. Takes effect at the next import.</source>
        <translation>当导入的文件与索引中同一图像的内容不同时。下次导入时生效。</translation>
    </message>
    <message>
        <source>Keep the indexed file</source>
        <translation>保留已索引的文件</translation>
    </message>
    <message>
        <source>Take the new file</source>
        <translation>采用新文件</translation>
    </message>
    <message>
        <source>Deletion</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>What happens to the files of records that are deleted</source>
        <translation>删除记录时如何处理其文件</translation>
    </message>
    <message>
        <source>Read at each deletion: takes effect at once.</source>
        <translation>每次删除时读取：立即生效。</translation>
    </message>
    <message>
        <source>Remove copied files only</source>
        <translation>仅删除复制的文件</translation>
    </message>
    <message>
        <source>Remove referenced files too</source>
        <translation>同时删除被引用的文件</translation>
    </message>
    <message>
        <source>Takes effect with the next main window: at the next start, or after a change of language or index.</source>
        <translation>在下一个主窗口生效：下次启动时，或更换语言或索引之后。</translation>
    </message>
</context>
<context>
    <name>CloudPage</name>
    <message>
        <source>Cloud</source>
        <translation>云端</translation>
    </message>
    <message>
        <source>A&amp;ddress:</source>
        <translation>地址(&amp;D):</translation>
    </message>
    <message>
        <source>Where studies are uploaded to. Takes effect at the next sign-in; signing out of the cloud clears it.</source>
        <translation>检查上传到的地址。下次登录时生效；退出云端登录会清空此项。</translation>
    </message>
    <message>
        <source>The address of the cloud must begin with https:// or http:// and name a host.</source>
        <translation>云端地址必须以 https:// 或 http:// 开头，并包含主机名。</translation>
    </message>
</context>
<context>
    <name>DataBaseSetForm</name>
    <message>
        <source>Database</source>
        <translation>数据库</translation>
    </message>
    <message>
        <source>Index</source>
        <translation>索引</translation>
    </message>
    <message>
        <source>Care</source>
        <translation>维护</translation>
    </message>
    <message>
        <source>&amp;Open Another…</source>
        <translation>打开其他索引(&amp;O)…</translation>
    </message>
    <message>
        <source>Work on another index, or make a new one</source>
        <translation>使用其他索引，或新建一个</translation>
    </message>
    <message>
        <source>&amp;Copy path</source>
        <translation>复制路径(&amp;C)</translation>
    </message>
    <message>
        <source>Copy the path of the index to the clipboard</source>
        <translation>将索引的路径复制到剪贴板</translation>
    </message>
    <message>
        <source>Open &amp;folder</source>
        <translation>打开文件夹(&amp;F)</translation>
    </message>
    <message>
        <source>Show the folder of the index</source>
        <translation>显示索引所在的文件夹</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Open Index</source>
        <translation>打开索引</translation>
    </message>
    <message>
        <source>Indexes (*.db);;All files (*)</source>
        <translation>索引 (*.db);;所有文件 (*)</translation>
    </message>
    <message>
        <source>The program works on %1 from its next start.</source>
        <translation>程序下次启动时将使用 %1。</translation>
    </message>
    <message>
        <source>This file cannot be written: %1</source>
        <translation>无法写入此文件：%1</translation>
    </message>
    <message>
        <source>There is no index %1. Make a new, empty one?</source>
        <translation>没有索引 %1。是否新建一个空索引?</translation>
    </message>
</context>
<context>
    <name>DataSaveTypeForm</name>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>How shall the files be imported?</source>
        <translation>如何导入这些文件?</translation>
    </message>
    <message>
        <source>&amp;Reference them where they are</source>
        <translation>引用原位置的文件(&amp;R)</translation>
    </message>
    <message>
        <source>Takes no space; the files must stay where they are</source>
        <translation>不占用空间；文件必须保留在原处</translation>
    </message>
    <message>
        <source>&amp;Copy them into the store</source>
        <translation>复制到存储区(&amp;C)</translation>
    </message>
    <message>
        <source>Right for discs, sticks and network folders</source>
        <translation>适用于光盘、U 盘和网络文件夹</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>DestinationList</name>
    <message>
        <source>Destinations</source>
        <translation>目标节点</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>目标节点</translation>
    </message>
    <message>
        <source>AE title</source>
        <translation>AE 标题</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>&amp;Check Connection</source>
        <translation>检查连接(&amp;C)</translation>
    </message>
    <message>
        <source>Ask the checked destinations, or all where none is checked, whether they answer</source>
        <translation>询问勾选的目标节点是否应答；未勾选时询问全部</translation>
    </message>
    <message>
        <source>Asking…</source>
        <translation>正在询问…</translation>
    </message>
</context>
<context>
    <name>DestinationsPage</name>
    <message>
        <source>DICOM Destinations</source>
        <translation>DICOM 目标节点</translation>
    </message>
    <message>
        <source>Destinations</source>
        <translation>目标节点</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>添加(&amp;A)</translation>
    </message>
    <message>
        <source>Remo&amp;ve</source>
        <translation>移除(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>名称(&amp;N):</translation>
    </message>
    <message>
        <source>AE &amp;title:</source>
        <translation>AE 标题(&amp;T):</translation>
    </message>
    <message>
        <source>A&amp;ddress:</source>
        <translation>地址(&amp;D):</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>端口(&amp;P):</translation>
    </message>
    <message>
        <source>New destination</source>
        <translation>新目标节点</translation>
    </message>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
    <message>
        <source>&amp;Check Connection</source>
        <translation>检查连接(&amp;C)</translation>
    </message>
    <message>
        <source>Ask this destination whether it answers</source>
        <translation>询问此目标节点是否应答</translation>
    </message>
    <message>
        <source>Asking…</source>
        <translation>正在询问…</translation>
    </message>
    <message>
        <source>What Import Folder brings in is sent on to all of them; Send and Query/Retrieve let you choose. Takes effect at the next transfer.</source>
        <translation>“导入文件夹”导入的内容会转发到全部目标节点；“发送”和“查询/获取”可自行选择。下次传输时生效。</translation>
    </message>
</context>
<context>
    <name>FieldPage</name>
    <message>
        <source>Find a column</source>
        <translation>查找列</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>字段</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>列</translation>
    </message>
    <message>
        <source>Fields that are shown</source>
        <translation>显示的字段</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>全部(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>全不选(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Defaults</source>
        <translation>默认(&amp;D)</translation>
    </message>
    <message>
        <source>Fields</source>
        <translation>字段</translation>
    </message>
    <message>
        <source>The database reported an error: %1</source>
        <translation>数据库报告错误：%1</translation>
    </message>
</context>
<context>
    <name>FileChooser</name>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
</context>
<context>
    <name>ImportIssueModel</name>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>结果</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>原因</translation>
    </message>
</context>
<context>
    <name>ImportProgressPage</name>
    <message>
        <source>Progress of the import</source>
        <translation>导入进度</translation>
    </message>
    <message>
        <source>File being read</source>
        <translation>正在读取的文件</translation>
    </message>
    <message>
        <source>Stop the import; what has been imported so far stays</source>
        <translation>停止导入；已导入的内容会保留</translation>
    </message>
    <message>
        <source>Files:</source>
        <translation>文件：</translation>
    </message>
    <message>
        <source>Rate:</source>
        <translation>速度：</translation>
    </message>
    <message>
        <source>Elapsed:</source>
        <translation>已用时间：</translation>
    </message>
    <message>
        <source>Time left:</source>
        <translation>剩余时间：</translation>
    </message>
    <message>
        <source>Waiting for other imports to end…</source>
        <translation>正在等待其他导入结束…</translation>
    </message>
    <message>
        <source>–</source>
        <translation>–</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Looking for files…</source>
        <translation>正在查找文件…</translation>
    </message>
    <message>
        <source>Importing, still looking for files…</source>
        <translation>正在导入，同时继续查找文件…</translation>
    </message>
    <message>
        <source>Importing…</source>
        <translation>正在导入…</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>%1 files/s</source>
        <translation>%1 个文件/秒</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>正在取消…</translation>
    </message>
</context>
<context>
    <name>ImportProgressWidget</name>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
</context>
<context>
    <name>ImportReportPage</name>
    <message>
        <source>&amp;Not indexed:</source>
        <translation>未索引(&amp;N):</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>找到</translation>
    </message>
    <message>
        <source>Files that were not indexed</source>
        <translation>未索引的文件</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>保存(&amp;S)…</translation>
    </message>
    <message>
        <source>Write this report to a text file</source>
        <translation>将此报告写入文本文件</translation>
    </message>
    <message>
        <source>Try &amp;again</source>
        <translation>重试(&amp;A)</translation>
    </message>
    <message>
        <source>Import just the files that could not be read</source>
        <translation>仅导入无法读取的文件</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Save the report</source>
        <translation>保存报告</translation>
    </message>
    <message>
        <source>Text files (*.txt)</source>
        <translation>文本文件 (*.txt)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>The report could not be written to %1: %2</source>
        <translation>报告无法写入 %1: %2</translation>
    </message>
</context>
<context>
    <name>ImportReportText</name>
    <message>
        <source>Hidden</source>
        <translation>隐藏文件</translation>
    </message>
    <message>
        <source>A link that leads back to a folder already visited</source>
        <translation>指向已访问过的文件夹的链接</translation>
    </message>
    <message>
        <source>A link to nothing</source>
        <translation>无目标的链接</translation>
    </message>
    <message>
        <source>Not a regular file</source>
        <translation>不是普通文件</translation>
    </message>
    <message>
        <source>No permission to read it</source>
        <translation>没有读取权限</translation>
    </message>
    <message>
        <source>Does not exist</source>
        <translation>不存在</translation>
    </message>
    <message>
        <source>Its name is no text in the system&apos;s encoding</source>
        <translation>文件名不符合系统编码</translation>
    </message>
    <message>
        <source>Belongs to the store itself</source>
        <translation>属于存储区本身</translation>
    </message>
    <message>
        <source>Not DICOM</source>
        <translation>不是 DICOM 文件</translation>
    </message>
    <message>
        <source>Damaged</source>
        <translation>已损坏</translation>
    </message>
    <message>
        <source>Belongs to no patient and study</source>
        <translation>不属于任何患者和检查</translation>
    </message>
    <message>
        <source>Lacks an identifier</source>
        <translation>缺少标识符</translation>
    </message>
    <message>
        <source>Has an identifier that is not valid</source>
        <translation>标识符无效</translation>
    </message>
    <message>
        <source>Another file under the same identifier is in the index and was kept</source>
        <translation>索引中已有同一标识符的其他文件，已保留</translation>
    </message>
    <message>
        <source>Could not be read</source>
        <translation>无法读取</translation>
    </message>
    <message>
        <source>Could not be copied into the store</source>
        <translation>无法复制到存储区</translation>
    </message>
    <message>
        <source>The index refused it</source>
        <translation>索引拒绝写入</translation>
    </message>
    <message>
        <source>The import is complete.</source>
        <translation>导入完成。</translation>
    </message>
    <message>
        <source>The import was cancelled; what had been imported stays.</source>
        <translation>导入已取消；已导入的内容会保留。</translation>
    </message>
    <message>
        <source>The import stopped because the index failed</source>
        <translation>因索引出错，导入已停止</translation>
    </message>
    <message>
        <source>The import stopped because the disk is full</source>
        <translation>因磁盘已满，导入已停止</translation>
    </message>
    <message>
        <source>New</source>
        <translation>新增</translation>
    </message>
    <message>
        <source>Already there</source>
        <translation>已存在</translation>
    </message>
    <message>
        <source>Replaced</source>
        <translation>已替换</translation>
    </message>
    <message>
        <source>Media directories</source>
        <translation>介质目录</translation>
    </message>
    <message>
        <source>Unreadable</source>
        <translation>无法读取</translation>
    </message>
    <message>
        <source>Refused</source>
        <translation>被拒绝</translation>
    </message>
    <message>
        <source>Skipped</source>
        <translation>已跳过</translation>
    </message>
    <message>
        <source>%1 %2 files found in %3 s.</source>
        <translation>%1 找到 %2 个文件，用时 %3 秒。</translation>
    </message>
    <message>
        <source> %1 more were not reached.</source>
        <translation> 另有 %1 个未处理。</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>找到</translation>
    </message>
    <message>
        <source>Not indexed:</source>
        <translation>未索引：</translation>
    </message>
    <message>
        <source>The folder of the index %1 does not exist and cannot be made</source>
        <translation>索引 %1 所在的文件夹不存在，也无法创建</translation>
    </message>
    <message>
        <source>The index %1 cannot be opened</source>
        <translation>无法打开索引 %1</translation>
    </message>
    <message>
        <source>The index %1 or its folder cannot be written</source>
        <translation>索引 %1 或其文件夹无法写入</translation>
    </message>
    <message>
        <source>The index %1 is in use by another program. Close that program and try again</source>
        <translation>索引 %1 正被其他程序使用。请关闭该程序后重试</translation>
    </message>
    <message>
        <source>The file %1 is not an index; it was left as it is</source>
        <translation>文件 %1 不是索引；未作任何更改</translation>
    </message>
    <message>
        <source>The index %1 is damaged; it was left as it is. Restore it from a backup, or move it away and import again</source>
        <translation>索引 %1 已损坏；未作任何更改。请从备份恢复，或将其移走后重新导入</translation>
    </message>
    <message>
        <source>The database %1 belongs to another program; it was left as it is</source>
        <translation>数据库 %1 属于其他程序；未作任何更改</translation>
    </message>
    <message>
        <source>The index %1 was made by a newer version of this program; it was left as it is</source>
        <translation>索引 %1 由本程序的更新版本创建；未作任何更改</translation>
    </message>
    <message>
        <source>There is no space left for the index %1</source>
        <translation>索引 %1 所在磁盘空间不足</translation>
    </message>
    <message>
        <source>The index %1 could not be upgraded; it was left as it is</source>
        <translation>索引 %1 无法升级；未作任何更改</translation>
    </message>
    <message>
        <source>Damaged in its archive, or the archive itself is damaged</source>
        <translation>在压缩包中已损坏，或压缩包本身已损坏</translation>
    </message>
    <message>
        <source>An archive too deep within archives</source>
        <translation>压缩包嵌套层数过多</translation>
    </message>
    <message>
        <source>The archive grows beyond all measure and was left here</source>
        <translation>压缩包解压后过大，未继续解压</translation>
    </message>
    <message>
        <source>Not a readable ZIP archive</source>
        <translation>不是可读取的 ZIP 压缩包</translation>
    </message>
    <message numerus="yes">
        <source>Needs a password, %Ln file(s) skipped</source>
        <translation>
            <numerusform>需要密码，已跳过 %Ln 个文件</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>IndexCare</name>
    <message>
        <source>Chec&amp;k</source>
        <translation>检查完整性(&amp;K)</translation>
    </message>
    <message>
        <source>Reads the whole index and looks for damage</source>
        <translation>读取整个索引并查找损坏</translation>
    </message>
    <message>
        <source>Co&amp;mpact</source>
        <translation>压缩(&amp;M)</translation>
    </message>
    <message>
        <source>Gives the room of deleted records back to the disk</source>
        <translation>将已删除记录的空间归还磁盘</translation>
    </message>
    <message>
        <source>&amp;Back Up…</source>
        <translation>备份(&amp;B)…</translation>
    </message>
    <message>
        <source>Copies the index to another file; the images stay where they are</source>
        <translation>将索引复制到另一文件；图像仍在原处</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>停止(&amp;T)</translation>
    </message>
    <message>
        <source>Ends what runs and leaves the index as it was</source>
        <translation>停止正在进行的操作，索引保持不变</translation>
    </message>
    <message>
        <source>Checking the index…</source>
        <translation>正在检查索引…</translation>
    </message>
    <message>
        <source>An import is running. Compact the index when it has ended.</source>
        <translation>正在导入。请在导入结束后再压缩索引。</translation>
    </message>
    <message>
        <source>Compacting the index…</source>
        <translation>正在压缩索引…</translation>
    </message>
    <message>
        <source>Back Up the Index</source>
        <translation>备份索引</translation>
    </message>
    <message>
        <source>Indexes (*.db);;All files (*)</source>
        <translation>索引 (*.db);;所有文件 (*)</translation>
    </message>
    <message>
        <source>The backup must be another file than the index.</source>
        <translation>备份文件不能是索引本身。</translation>
    </message>
    <message>
        <source>Copying the index…</source>
        <translation>正在复制索引…</translation>
    </message>
</context>
<context>
    <name>IndexFactsView</name>
    <message>
        <source>File:</source>
        <translation>文件：</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>大小：</translation>
    </message>
    <message>
        <source>Not uploaded</source>
        <translation>未上传</translation>
    </message>
    <message>
        <source>Being uploaded</source>
        <translation>上传中</translation>
    </message>
    <message>
        <source>Uploaded</source>
        <translation>已上传</translation>
    </message>
    <message>
        <source>Patients</source>
        <translation>患者</translation>
    </message>
    <message>
        <source>Studies</source>
        <translation>检查</translation>
    </message>
    <message>
        <source>Series</source>
        <translation>序列</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>In all</source>
        <translation>总计</translation>
    </message>
</context>
<context>
    <name>InquirySaveForm</name>
    <message>
        <source>Save Inquiry As</source>
        <translation>查询另存为</translation>
    </message>
    <message>
        <source>&amp;Name of the inquiry</source>
        <translation>查询名称(&amp;N)</translation>
    </message>
    <message>
        <source>A name that no stored inquiry has</source>
        <translation>尚未被使用的名称</translation>
    </message>
    <message>
        <source>Name of the inquiry</source>
        <translation>查询名称</translation>
    </message>
    <message>
        <source>Save under this name</source>
        <translation>以此名称保存</translation>
    </message>
    <message>
        <source>Save nothing</source>
        <translation>不保存</translation>
    </message>
    <message>
        <source>The inquiry needs a name</source>
        <translation>查询需要名称</translation>
    </message>
</context>
<context>
    <name>LauncherSettings</name>
    <message>
        <source>Joint</source>
        <translation>关节</translation>
    </message>
    <message>
        <source>图像对比</source>
        <translation>图像对比</translation>
    </message>
    <message>
        <source>Vessel</source>
        <translation>血管</translation>
    </message>
    <message>
        <source>SWI</source>
        <translation>SWI</translation>
    </message>
    <message>
        <source>Infarction</source>
        <translation>梗死</translation>
    </message>
</context>
<context>
    <name>MaintenanceText</name>
    <message>
        <source>Stopped. The index is as it was.</source>
        <translation>已停止。索引保持不变。</translation>
    </message>
    <message>
        <source>%1, row %2: its record in %3 is missing</source>
        <translation>%1 第 %2 行：其在 %3 中的上级记录缺失</translation>
    </message>
    <message>
        <source>No damage was found.</source>
        <translation>未发现损坏。</translation>
    </message>
    <message>
        <source>The index is damaged. Back it up, start with a new one and import the images again; they are not touched.</source>
        <translation>索引已损坏。请备份索引，新建一个索引并重新导入图像；图像文件不受影响。</translation>
    </message>
    <message>
        <source>… and %1 more</source>
        <translation>… 另有 %1 处</translation>
    </message>
    <message>
        <source>Compacted: %1 before, %2 now.</source>
        <translation>压缩完成：原为 %1，现为 %2。</translation>
    </message>
    <message>
        <source>The backup is complete: %1.</source>
        <translation>备份完成：%1。</translation>
    </message>
    <message>
        <source>This needs %1 of free disk space in %2. Nothing was changed.</source>
        <translation>%2 需要 %1 的可用磁盘空间。未作任何更改。</translation>
    </message>
    <message>
        <source>The index is being compacted. Try again when that has ended.</source>
        <translation>正在压缩索引。请在结束后重试。</translation>
    </message>
    <message>
        <source>Records are being deleted. Try again when that has ended.</source>
        <translation>正在删除记录。请在结束后重试。</translation>
    </message>
</context>
<context>
    <name>NTableView</name>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
</context>
<context>
    <name>PlainTableView</name>
    <message>
        <source>&amp;Copy Rows</source>
        <translation>复制行(&amp;C)</translation>
    </message>
</context>
<context>
    <name>ReceivePage</name>
    <message>
        <source>Receiving</source>
        <translation>接收</translation>
    </message>
    <message>
        <source>&amp;Receive images that others send</source>
        <translation>接收其他设备发送的图像(&amp;R)</translation>
    </message>
    <message>
        <source>anybody</source>
        <translation>任意发送方</translation>
    </message>
    <message>
        <source>Reac&amp;hable from:</source>
        <translation>可访问范围(&amp;H):</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>端口(&amp;P):</translation>
    </message>
    <message>
        <source>this computer only</source>
        <translation>仅本机</translation>
    </message>
    <message>
        <source>the whole network</source>
        <translation>整个网络</translation>
    </message>
    <message>
        <source>%1 is no numeric address.</source>
        <translation>%1 不是数字形式的地址。</translation>
    </message>
    <message>
        <source>The port must be 1 to 65535.</source>
        <translation>端口必须在 1 到 65535 之间。</translation>
    </message>
    <message>
        <source>Also take objects of pri&amp;vate kinds, which only some programs can show</source>
        <translation>也接收私有类型的对象（仅部分程序能显示）(&amp;V)</translation>
    </message>
    <message>
        <source>AE &amp;title of this workstation:</source>
        <translation>本工作站的 AE 标题(&amp;T):</translation>
    </message>
    <message>
        <source>A&amp;ccept only from:</source>
        <translation>仅接受来自(&amp;C):</translation>
    </message>
    <message>
        <source>The AE title of this workstation must be 1 to 16 characters of plain ASCII without backslash.</source>
        <translation>本工作站的 AE 标题必须为 1 到 16 个不含反斜杠的 ASCII 字符。</translation>
    </message>
    <message>
        <source>Each of those who may send must be an AE title of 1 to 16 characters of plain ASCII without backslash.</source>
        <translation>每个允许的发送方必须是 1 到 16 个不含反斜杠的 ASCII 字符的 AE 标题。</translation>
    </message>
    <message>
        <source>Sending, searching and retrieving use the same AE title. Name those who may send by their AE titles, parted by commas; with none named, everybody may. What is received is kept in the store beside the index. Takes effect at once. Upper and lower case count in AE titles.</source>
        <translation>发送、查询和获取也使用此 AE 标题。请以 AE 标题列出允许的发送方，用逗号分隔；未列出则任何发送方均可。接收的图像保存在索引旁的存储区。立即生效。AE 标题区分大小写。</translation>
    </message>
</context>
<context>
    <name>SendFailureList</name>
    <message>
        <source>Images that were not taken</source>
        <translation>未被接收的图像</translation>
    </message>
    <message>
        <source>N&amp;ot taken: %1</source>
        <translation>未被接收(&amp;O): %1</translation>
    </message>
</context>
<context>
    <name>SendFailureModel</name>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>目标节点</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>原因</translation>
    </message>
</context>
<context>
    <name>SendJobList</name>
    <message>
        <source>Sends</source>
        <translation>发送任务</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>目标节点</translation>
    </message>
    <message>
        <source>Patient</source>
        <translation>患者</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Sent</source>
        <translation>已发送</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Ca&amp;ncel Send</source>
        <translation>取消发送(&amp;N)</translation>
    </message>
    <message>
        <source>Send no more to the destination of this line; what it has taken stays there</source>
        <translation>不再向此行的目标节点发送；已接收的内容保留在对方</translation>
    </message>
    <message>
        <source>&amp;Retry Failed</source>
        <translation>重试失败项(&amp;R)</translation>
    </message>
    <message>
        <source>Send again what the destination of this line did not take</source>
        <translation>重新发送此行目标节点未接收的内容</translation>
    </message>
    <message numerus="yes">
        <source>%n taken with a warning</source>
        <translation>
            <numerusform>%n 幅已接收但有警告</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n skipped: no DICOM file</source>
        <translation>
            <numerusform>已跳过 %n 个：不是 DICOM 文件</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SendProgressPanel</name>
    <message>
        <source>Progress of the send</source>
        <translation>发送进度</translation>
    </message>
    <message numerus="yes">
        <source>%n destination(s) cannot be reached now</source>
        <translation>
            <numerusform>%n 个目标节点目前无法连接</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TransferText</name>
    <message>
        <source>The address, port or AE title of the destination is not valid</source>
        <translation>目标节点的地址、端口或 AE 标题无效</translation>
    </message>
    <message>
        <source>Its name is not known on this network</source>
        <translation>在此网络中找不到该主机名</translation>
    </message>
    <message>
        <source>Nothing listens at that address and port</source>
        <translation>该地址和端口上没有服务在监听</translation>
    </message>
    <message>
        <source>There is no way to that address</source>
        <translation>无法到达该地址</translation>
    </message>
    <message>
        <source>It did not answer in time</source>
        <translation>对方未在规定时间内应答</translation>
    </message>
    <message>
        <source>It does not know the AE title of this workstation</source>
        <translation>对方不认识本工作站的 AE 标题</translation>
    </message>
    <message>
        <source>It does not go by this AE title</source>
        <translation>对方的 AE 标题与此不符</translation>
    </message>
    <message>
        <source>It is too busy at the moment</source>
        <translation>对方目前过于繁忙</translation>
    </message>
    <message>
        <source>It rejected the connection</source>
        <translation>对方拒绝了连接</translation>
    </message>
    <message>
        <source>It takes none of the kinds of data that were offered</source>
        <translation>对方不接收所提供的任何数据类型</translation>
    </message>
    <message>
        <source>It broke off the transfer</source>
        <translation>对方中断了传输</translation>
    </message>
    <message>
        <source>The connection was lost</source>
        <translation>连接已断开</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>已停止</translation>
    </message>
    <message>
        <source>Its answer could not be understood</source>
        <translation>无法理解对方的应答</translation>
    </message>
    <message>
        <source>Accepted</source>
        <translation>已接收</translation>
    </message>
    <message>
        <source>A value is not valid</source>
        <translation>某个值无效</translation>
    </message>
    <message>
        <source>Processing failed there</source>
        <translation>对方处理失败</translation>
    </message>
    <message>
        <source>It has this object already</source>
        <translation>对方已有此对象</translation>
    </message>
    <message>
        <source>The object&apos;s identifier is not valid</source>
        <translation>对象的标识符无效</translation>
    </message>
    <message>
        <source>It does not take objects of this kind</source>
        <translation>对方不接收此类对象</translation>
    </message>
    <message>
        <source>Not authorized</source>
        <translation>未获授权</translation>
    </message>
    <message>
        <source>Accepted, with values changed there</source>
        <translation>已接收，但对方更改了部分值</translation>
    </message>
    <message>
        <source>Accepted, with values left out there</source>
        <translation>已接收，但对方舍弃了部分值</translation>
    </message>
    <message>
        <source>Accepted, though the data do not fit their kind</source>
        <translation>已接收，但数据与其类型不符</translation>
    </message>
    <message>
        <source>Out of resources</source>
        <translation>对方资源不足</translation>
    </message>
    <message>
        <source>The data do not fit their kind</source>
        <translation>数据与其类型不符</translation>
    </message>
    <message>
        <source>Accepted, with a warning</source>
        <translation>已接收，但有警告</translation>
    </message>
    <message>
        <source>It cannot understand the data</source>
        <translation>对方无法理解数据</translation>
    </message>
    <message>
        <source>Refused</source>
        <translation>被拒绝</translation>
    </message>
    <message>
        <source>The file does not exist any more</source>
        <translation>文件已不存在</translation>
    </message>
    <message>
        <source>The file cannot be read</source>
        <translation>无法读取文件</translation>
    </message>
    <message>
        <source>No DICOM object</source>
        <translation>不是 DICOM 对象</translation>
    </message>
    <message>
        <source>It takes neither the compression of this object nor uncompressed objects</source>
        <translation>对方既不接收此对象的压缩方式，也不接收未压缩的对象</translation>
    </message>
    <message>
        <source>It takes uncompressed objects only, and this one is too large to be decompressed</source>
        <translation>对方只接收未压缩的对象，而此对象过大，无法解压</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>what happened: in the system&apos;s words</comment>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>meaning of a status (its hexadecimal number)</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>等待中</translation>
    </message>
    <message>
        <source>Sending</source>
        <translation>正在发送</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>已暂停</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>已完成</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>已取消</translation>
    </message>
    <message>
        <source>Answers (%1 ms)</source>
        <translation>有应答 (%1 毫秒)</translation>
    </message>
    <message>
        <source>A destination needs a name.</source>
        <translation>目标节点需要名称。</translation>
    </message>
    <message>
        <source>The name %1 of a destination has a character that is not allowed.</source>
        <translation>目标节点名称 %1 含有不允许的字符。</translation>
    </message>
    <message>
        <source>Two destinations are called %1.</source>
        <translation>有两个目标节点都名为 %1。</translation>
    </message>
    <message>
        <source>The AE title of %1 must be 1 to 16 characters of plain ASCII without backslash.</source>
        <translation>%1 的 AE 标题必须为 1 到 16 个不含反斜杠的 ASCII 字符。</translation>
    </message>
    <message>
        <source>The destination %1 needs an address.</source>
        <translation>目标节点 %1 需要地址。</translation>
    </message>
    <message>
        <source>The port of %1 must be 1 to 65535.</source>
        <translation>%1 的端口必须在 1 到 65535 之间。</translation>
    </message>
    <message>
        <source>%1, %2 failed</source>
        <translation>%1，%2 幅失败</translation>
    </message>
    <message>
        <source>%1 images/s</source>
        <translation>%1 幅/秒</translation>
    </message>
    <message>
        <source>%1 images/s, %2 left</source>
        <translation>%1 幅/秒，剩余 %2</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>name of a destination (its AE title)</comment>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>; </source>
        <comment>between names, which may have commas</comment>
        <translation>、</translation>
    </message>
    <message numerus="yes">
        <source>%1 and %Ln more</source>
        <comment>names of patients</comment>
        <translation>
            <numerusform>%1 等，另有 %Ln 人</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln image(s) sent</source>
        <translation>
            <numerusform>已发送 %1 / %Ln 幅图像</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>dicomSend</name>
    <message>
        <source>Send Images</source>
        <translation>发送图像</translation>
    </message>
    <message>
        <source>What is sent</source>
        <translation>发送内容</translation>
    </message>
    <message>
        <source>Patients whose images are sent</source>
        <translation>要发送图像的患者</translation>
    </message>
    <message>
        <source>Patient</source>
        <translation>患者</translation>
    </message>
    <message>
        <source>Modality</source>
        <translation>设备类型</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Where to</source>
        <translation>发送到</translation>
    </message>
    <message>
        <source>Se&amp;t Up Destinations…</source>
        <translation>设置目标节点(&amp;T)…</translation>
    </message>
    <message>
        <source>&amp;Send</source>
        <translation>发送(&amp;S)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>What is being sent goes on</source>
        <translation>正在进行的发送会继续</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(无姓名)</translation>
    </message>
    <message>
        <source>Nothing that has images is selected.</source>
        <translation>所选内容没有图像。</translation>
    </message>
    <message>
        <source>No destination is set up.</source>
        <translation>尚未设置目标节点。</translation>
    </message>
    <message>
        <source>Check at least one destination.</source>
        <translation>请至少勾选一个目标节点。</translation>
    </message>
    <message>
        <source>These images are on their way. Choose others, or another destination, to send more.</source>
        <translation>这些图像已在发送中。如需继续发送，请选择其他图像或其他目标节点。</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>patients, files</comment>
        <translation>%1，%2</translation>
    </message>
    <message numerus="yes">
        <source>%Ln patient(s)</source>
        <translation>
            <numerusform>%Ln 位患者</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s)</source>
        <translation>
            <numerusform>%Ln 个文件</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>kivMessageBoxForm</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>selectHideForm</name>
    <message>
        <source>Fields</source>
        <translation>字段</translation>
    </message>
    <message>
        <source>&amp;Patients</source>
        <translation>患者(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Studies</source>
        <translation>检查(&amp;S)</translation>
    </message>
    <message>
        <source>S&amp;eries</source>
        <translation>序列(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Images</source>
        <translation>图像(&amp;I)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Tables</source>
        <translation>表格</translation>
    </message>
</context>
<context>
    <name>swimconfig</name>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Pages of settings</source>
        <translation>设置页</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>These settings cannot be kept, since this file cannot be written: %1</source>
        <translation>无法保存这些设置，因为此文件无法写入：%1</translation>
    </message>
</context>
</TS>
