<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ActionMenus</name>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>工具(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Import Folder…</source>
        <translation>导入文件夹(&amp;I)…</translation>
    </message>
    <message>
        <source>E&amp;xport…</source>
        <translation>导出(&amp;X)…</translation>
    </message>
    <message>
        <source>&amp;Send…</source>
        <translation>发送(&amp;S)…</translation>
    </message>
    <message>
        <source>&amp;Upload</source>
        <translation>上传(&amp;U)</translation>
    </message>
    <message>
        <source>Do&amp;wnload…</source>
        <translation>下载(&amp;W)…</translation>
    </message>
    <message>
        <source>In&amp;dex…</source>
        <translation>索引(&amp;D)…</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>&amp;Submit Changes</source>
        <translation>提交更改(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Revert Changes</source>
        <translation>还原更改(&amp;R)</translation>
    </message>
    <message>
        <source>Edit &amp;Patient…</source>
        <translation>编辑患者信息(&amp;P)…</translation>
    </message>
    <message>
        <source>&amp;Anonymize…</source>
        <translation>匿名化(&amp;A)…</translation>
    </message>
    <message>
        <source>&amp;Delete…</source>
        <translation>删除(&amp;D)…</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>刷新(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Columns…</source>
        <translation>列(&amp;C)…</translation>
    </message>
    <message>
        <source>Cloud &amp;Browser</source>
        <translation>云端浏览(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>关于(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Today&apos;s Patients</source>
        <translation>今日患者(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;All Patients</source>
        <translation>所有患者(&amp;A)</translation>
    </message>
    <message>
        <source>Ctrl+T</source>
        <translation>Ctrl+T</translation>
    </message>
    <message>
        <source>Ctrl+Shift+A</source>
        <translation>Ctrl+Shift+A</translation>
    </message>
    <message>
        <source>Show All Ta&amp;bles</source>
        <translation>显示所有表格(&amp;B)</translation>
    </message>
    <message>
        <source>Only &amp;Patients</source>
        <translation>仅患者(&amp;P)</translation>
    </message>
    <message>
        <source>Only &amp;Studies</source>
        <translation>仅检查(&amp;S)</translation>
    </message>
    <message>
        <source>Only S&amp;eries</source>
        <translation>仅序列(&amp;E)</translation>
    </message>
    <message>
        <source>Only &amp;Images</source>
        <translation>仅图像(&amp;I)</translation>
    </message>
    <message>
        <source>%1 is not available in this version.</source>
        <translation>此版本不提供“%1”。</translation>
    </message>
    <message>
        <source>&amp;Settings…</source>
        <translation>设置(&amp;S)…</translation>
    </message>
    <message>
        <source>Import &amp;Files…</source>
        <translation>导入文件(&amp;F)…</translation>
    </message>
</context>
<context>
    <name>ArchiveModel</name>
    <message>
        <source>Patient, study, series</source>
        <translation>患者、检查、序列</translation>
    </message>
    <message>
        <source>Modality</source>
        <translation>设备类型</translation>
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
        <source>In the index</source>
        <translation>索引中</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>（无姓名）</translation>
    </message>
    <message>
        <source>Birth date</source>
        <translation>出生日期</translation>
    </message>
    <message>
        <source>(no description)</source>
        <translation>（无描述）</translation>
    </message>
    <message>
        <source>No series</source>
        <translation>没有序列</translation>
    </message>
    <message>
        <source>Asking the archive…</source>
        <translation>正在询问归档服务器…</translation>
    </message>
    <message>
        <source>Examined on</source>
        <translation>检查日期</translation>
    </message>
    <message>
        <source>ID, accession no.</source>
        <translation>编号、检查号</translation>
    </message>
</context>
<context>
    <name>ArchiveQuestionForm</name>
    <message>
        <source>Patient &amp;name:</source>
        <translation>患者姓名(&amp;N):</translation>
    </message>
    <message>
        <source>Patient name</source>
        <translation>患者姓名</translation>
    </message>
    <message>
        <source>Words of the name, in any order and case</source>
        <translation>姓名中的词，顺序和大小写不限</translation>
    </message>
    <message>
        <source>Patient &amp;ID:</source>
        <translation>患者编号(&amp;I):</translation>
    </message>
    <message>
        <source>Patient ID</source>
        <translation>患者编号</translation>
    </message>
    <message>
        <source>The whole ID; * stands for any text</source>
        <translation>完整的编号；* 代表任意文本</translation>
    </message>
    <message>
        <source>&amp;Birth date:</source>
        <translation>出生日期(&amp;B):</translation>
    </message>
    <message>
        <source>Birth date</source>
        <translation>出生日期</translation>
    </message>
    <message>
        <source>A date, such as %1</source>
        <translation>日期，例如 %1</translation>
    </message>
    <message>
        <source>&amp;Accession number:</source>
        <translation>检查号(&amp;A):</translation>
    </message>
    <message>
        <source>Accession number</source>
        <translation>检查号</translation>
    </message>
    <message>
        <source>The whole number; * stands for any text</source>
        <translation>完整的检查号；* 代表任意文本</translation>
    </message>
    <message>
        <source>Study &amp;description:</source>
        <translation>检查描述(&amp;D):</translation>
    </message>
    <message>
        <source>Study description</source>
        <translation>检查描述</translation>
    </message>
    <message>
        <source>Words of the description</source>
        <translation>描述中的词</translation>
    </message>
    <message>
        <source>Modality</source>
        <translation>设备类型</translation>
    </message>
    <message>
        <source>One or several, parted by blanks; empty for all</source>
        <translation>一个或多个，以空格分隔；留空表示全部</translation>
    </message>
    <message>
        <source>&amp;Modality:</source>
        <translation>设备类型(&amp;M):</translation>
    </message>
    <message>
        <source>Study date</source>
        <translation>检查日期</translation>
    </message>
    <message>
        <source>When the study was made</source>
        <translation>进行检查的日期</translation>
    </message>
    <message>
        <source>All</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今天</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>昨天</translation>
    </message>
    <message>
        <source>Last 7 days</source>
        <translation>近 7 天</translation>
    </message>
    <message>
        <source>Last 30 days</source>
        <translation>近 30 天</translation>
    </message>
    <message>
        <source>Between</source>
        <translation>日期范围</translation>
    </message>
    <message>
        <source>First day</source>
        <translation>起始日期</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>截止日期</translation>
    </message>
    <message>
        <source>Study da&amp;te:</source>
        <translation>检查日期(&amp;T):</translation>
    </message>
    <message>
        <source>f&amp;rom:</source>
        <translation>从(&amp;R):</translation>
    </message>
    <message>
        <source>t&amp;o:</source>
        <translation>到(&amp;O):</translation>
    </message>
    <message>
        <source>The birth date is no date. %1</source>
        <translation>出生日期无效。%1</translation>
    </message>
    <message>
        <source>The first day is after the last one.</source>
        <translation>起始日期晚于截止日期。</translation>
    </message>
</context>
<context>
    <name>ArchiveResults</name>
    <message>
        <source>Found in the archive</source>
        <translation>归档服务器中找到的内容</translation>
    </message>
    <message>
        <source>Enter retrieves what is chosen</source>
        <translation>按回车键获取所选内容</translation>
    </message>
</context>
<context>
    <name>ArchiveText</name>
    <message>
        <source>The archive does not know this workstation as a destination</source>
        <translation>归档服务器未将本工作站登记为目标节点</translation>
    </message>
    <message>
        <source>The archive is out of resources</source>
        <translation>归档服务器资源不足</translation>
    </message>
    <message>
        <source>The archive does not understand the question</source>
        <translation>归档服务器无法理解此查询</translation>
    </message>
    <message>
        <source>The archive does not offer this service</source>
        <translation>归档服务器不提供此服务</translation>
    </message>
    <message>
        <source>The archive does not allow it</source>
        <translation>归档服务器不允许此操作</translation>
    </message>
    <message>
        <source>The archive has refused or failed</source>
        <translation>归档服务器已拒绝或发生故障</translation>
    </message>
    <message numerus="yes">
        <source>%n image(s) not sent or not taken</source>
        <translation>
            <numerusform>%n 幅图像未发送或未被接收</numerusform>
        </translation>
    </message>
    <message>
        <source>The search was stopped</source>
        <translation>搜索已停止</translation>
    </message>
    <message>
        <source>The archive has no such study.</source>
        <translation>归档服务器中没有这样的检查。</translation>
    </message>
    <message numerus="yes">
        <source>%n study(ies) found.</source>
        <translation>
            <numerusform>找到 %n 个检查。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n answer(s) could not be read.</source>
        <translation>
            <numerusform>有 %n 个应答无法读取。</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>等待中</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>正在进行</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>已取消</translation>
    </message>
    <message>
        <source>Retrieved</source>
        <translation>已获取</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>The archive can only send the images to this workstation: switch receiving on in the settings, and tell the archive of it</source>
        <translation>归档服务器只能将图像发送到本工作站：请在设置中开启接收，并在归档服务器上登记本工作站</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>What comes cannot be kept beside the index: %1</source>
        <translation>收到的内容无法保存到索引旁：%1</translation>
    </message>
    <message>
        <source>This destination cannot be searched; choose an archive that can</source>
        <translation>此目标不支持查询，请选择可以查询的归档服务器</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between the parts of a list</comment>
        <translation>、</translation>
    </message>
    <message>
        <source>%1.</source>
        <comment>a sentence and its stop</comment>
        <translation>%1。</translation>
    </message>
    <message>
        <source>%1. %2</source>
        <comment>two sentences</comment>
        <translation>%1。%2</translation>
    </message>
    <message>
        <source>Series %1</source>
        <comment>its number</comment>
        <translation>序列 %1</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>meaning of a status (its hexadecimal number)</comment>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>There may be more: the archive was stopped there. Ask for less.</source>
        <translation>可能还有更多：归档服务器的应答在此处被截止。请缩小查询范围。</translation>
    </message>
    <message>
        <source>No. %1</source>
        <comment>accession number</comment>
        <translation>检查号 %1</translation>
    </message>
    <message>
        <source>whole study</source>
        <translation>整个检查</translation>
    </message>
    <message numerus="yes">
        <source>%n study(ies) or series asked for.</source>
        <translation>
            <numerusform>已请求 %n 项检查或序列。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln image(s)</source>
        <translation>
            <numerusform>%1 / %Ln 幅图像</numerusform>
        </translation>
    </message>
    <message>
        <source>All of it was in the index already</source>
        <translation>全部原已在索引中</translation>
    </message>
    <message numerus="yes">
        <source>%n image(s) of it were in the index already</source>
        <translation>
            <numerusform>其中 %n 幅图像原已在索引中</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The index has images of %n of them already; what is the same stays as it is.</source>
        <translation>
            <numerusform>索引中已有其中 %n 项的图像；相同的图像保持不变。</numerusform>
        </translation>
    </message>
    <message>
        <source>Series</source>
        <translation>序列</translation>
    </message>
    <message>
        <source>The index has all images of it already; what is the same stays as it is.</source>
        <translation>索引中已有所选项的全部图像；相同的图像保持不变。</translation>
    </message>
    <message>
        <source>The index has some images of it already; what is the same stays as it is.</source>
        <translation>索引中已有所选项的部分图像；相同的图像保持不变。</translation>
    </message>
    <message numerus="yes">
        <source>%n patient(s) without an ID: the archive cannot be asked for their studies.</source>
        <translation>
            <numerusform>%n 名患者没有编号，无法向归档服务器查询其检查。</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BrowserFoot</name>
    <message>
        <source>Sto&amp;p</source>
        <translation>停止(&amp;P)</translation>
    </message>
    <message>
        <source>Open S&amp;eries</source>
        <translation>打开序列(&amp;E)</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>Si&amp;gn In As…</source>
        <translation>以其他用户登录(&amp;G)…</translation>
    </message>
    <message>
        <source>Si&amp;gn In…</source>
        <translation>登录(&amp;G)…</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>Token</source>
        <translation>访问令牌</translation>
    </message>
    <message>
        <source>Not signed in</source>
        <translation>未登录</translation>
    </message>
</context>
<context>
    <name>BrowserWindow</name>
    <message>
        <source>Cloud Browser</source>
        <translation>云端浏览</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>搜索(&amp;S)</translation>
    </message>
    <message>
        <source>Studies</source>
        <translation>检查</translation>
    </message>
    <message>
        <source>Series</source>
        <translation>序列</translation>
    </message>
    <message numerus="yes">
        <source>The first %Ln study(ies); narrow the search to see the others</source>
        <translation>
            <numerusform>前 %Ln 个检查；请缩小搜索范围以查看其余检查</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln study(ies)</source>
        <translation>
            <numerusform>%Ln 个检查</numerusform>
        </translation>
    </message>
    <message>
        <source>Signing in…</source>
        <translation>正在登录…</translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation>正在搜索…</translation>
    </message>
    <message numerus="yes">
        <source>Fetching… %Ln image(s), %1</source>
        <translation>
            <numerusform>正在获取… %Ln 幅图像，%1</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CloudController</name>
    <message>
        <source>The session has ended.</source>
        <translation>会话已结束。</translation>
    </message>
    <message>
        <source>Cloud</source>
        <translation>云端</translation>
    </message>
    <message>
        <source>The cloud service does not accept the session any more. Uploads and downloads wait. Sign in again?</source>
        <translation>云端服务不再接受当前会话。上传和下载正在等待。要重新登录吗？</translation>
    </message>
    <message>
        <source>Sign In As…</source>
        <translation>以其他用户登录…</translation>
    </message>
    <message>
        <source>Sign &amp;In…</source>
        <translation>登录(&amp;I)…</translation>
    </message>
    <message>
        <source>Sign &amp;Out</source>
        <translation>退出登录(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Uploads…</source>
        <translation>上传任务(&amp;U)…</translation>
    </message>
    <message>
        <source>&amp;Settings…</source>
        <translation>设置(&amp;S)…</translation>
    </message>
    <message>
        <source>Cloud: not signed in</source>
        <translation>云端：未登录</translation>
    </message>
    <message>
        <source>Cloud: signed in</source>
        <translation>云端：已登录</translation>
    </message>
    <message>
        <source>Cloud: %1</source>
        <translation>云端：%1</translation>
    </message>
    <message>
        <source>Signed in at %1</source>
        <translation>已登录到 %1</translation>
    </message>
    <message>
        <source>Cloud: signing in…</source>
        <translation>云端：正在登录…</translation>
    </message>
    <message>
        <source>This file cannot be written, so the next start signs in again: %1</source>
        <translation>无法写入此文件，因此下次启动时会再次登录：%1</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Prints this and ends.</source>
        <translation>显示此帮助后退出。</translation>
    </message>
    <message>
        <source>The index file, made where there is none.</source>
        <translation>索引文件，不存在时新建。</translation>
    </message>
    <message>
        <source>Saves a picture of the window after the imports.</source>
        <translation>导入结束后保存窗口的截图。</translation>
    </message>
    <message>
        <source>Prints the import report and ends after the imports.</source>
        <translation>导入结束后输出导入报告并退出。</translation>
    </message>
    <message>
        <source>Imports DIR where nothing else is named and the index is empty.</source>
        <translation>未指定其他内容且索引为空时导入 DIR。</translation>
    </message>
    <message>
        <source>Only shows the images of the files and folders named, without an index; a .txt file names one a line.</source>
        <translation>仅显示指定文件和文件夹中的图像，不使用索引；.txt 文件每行指定一个。</translation>
    </message>
    <message>
        <source>Shows and manages a workstation&apos;s index of patients, studies, series and images.</source>
        <translation>显示和管理工作站的患者、检查、序列和图像索引。</translation>
    </message>
    <message>
        <source>Files and folders to import, or to preview.</source>
        <translation>要导入或预览的文件和文件夹。</translation>
    </message>
    <message>
        <source>--preview needs files to show.</source>
        <translation>--preview 需要指定要显示的文件。</translation>
    </message>
    <message>
        <source>The list %1 is longer than 16 MiB.</source>
        <translation>列表 %1 超过 16 MiB。</translation>
    </message>
    <message>
        <source>Takes the settings from DIR/config instead of the program&apos;s own; what an import does comes from config/main.ini of the working directory, else from DIR/../config.</source>
        <translation>从 DIR/config 而非程序自身的位置读取设置；导入的方式取自工作目录的 config/main.ini，否则取自 DIR/../config。</translation>
    </message>
</context>
<context>
    <name>CorrectionFinisher</name>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data finished</source>
        <translation>
            <numerusform>已完成 %Ln 项中断的患者数据更正</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data taken back</source>
        <translation>
            <numerusform>已撤回 %Ln 项中断的患者数据更正</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data still wait for the service</source>
        <translation>
            <numerusform>仍有 %Ln 项中断的患者数据更正在等待服务</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data could not be finished</source>
        <translation>
            <numerusform>有 %Ln 项中断的患者数据更正无法完成</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln interrupted correction(s) of patient data could not be finished yet: left for the next time</source>
        <translation>
            <numerusform>有 %Ln 项中断的患者数据更正尚未能完成，留待下次进行</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DeletionController</name>
    <message>
        <source>Select patients, studies or series first</source>
        <translation>请先选择患者、检查或序列</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>删除 %1</translation>
    </message>
    <message>
        <source>Export %1</source>
        <translation>导出 %1</translation>
    </message>
    <message>
        <source>Send %1</source>
        <translation>发送 %1</translation>
    </message>
    <message>
        <source>Stays in the store, though no record names it: %1</source>
        <translation>保留在存储区，但没有对应的记录：%1</translation>
    </message>
    <message>
        <source>Nothing says that this store belongs to this index.</source>
        <translation>没有标记表明此存储区属于此索引。</translation>
    </message>
    <message>
        <source>The store belongs to another index.</source>
        <translation>存储区属于另一个索引。</translation>
    </message>
    <message>
        <source>Another index lies beside this one and may use the store.</source>
        <translation>此索引旁还有另一个索引，可能也在使用该存储区。</translation>
    </message>
    <message>
        <source>The index is older than the store: import the store&apos;s files again to have records for all of them.</source>
        <translation>索引比存储区旧：请重新导入存储区的文件，使所有文件都有记录。</translation>
    </message>
    <message>
        <source>The index names copies in other places: its folder was renamed, or is reached by another name.</source>
        <translation>索引所记录的副本位于其他位置：其文件夹已改名，或经由其他名称访问。</translation>
    </message>
    <message>
        <source>The index has no images of the store.</source>
        <translation>索引中没有存储区的图像。</translation>
    </message>
    <message>
        <source>Taken out of the store, as no record names it: %1</source>
        <translation>已移出存储区，因为没有对应的记录：%1</translation>
    </message>
    <message>
        <source>An interrupted deletion could not be finished: %1 The next start tries again.</source>
        <translation>中断的删除未能完成：%1 下次启动时会再次尝试。</translation>
    </message>
    <message>
        <source>Deleted: %1; the files stay where they are</source>
        <translation>已删除：%1；文件保留在原处</translation>
    </message>
    <message numerus="yes">
        <source>Deleted: %1, with %Ln file(s)</source>
        <translation>
            <numerusform>已删除：%1，含 %Ln 个文件</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) of the store belong to no record and stay; the log names them</source>
        <translation>
            <numerusform>存储区中有 %Ln 个文件不属于任何记录，予以保留；日志中列出其名称</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) of the store belonged to no record; they lie in %1 for 30 days</source>
        <translation>
            <numerusform>存储区中有 %Ln 个文件不属于任何记录；它们将在 %1 中保留 30 天</numerusform>
        </translation>
    </message>
    <message>
        <source>Interrupted deletions were not finished and the store was not looked through: %1. The next start tries again.</source>
        <translation>中断的删除未能完成，存储区未检查：%1。下次启动时重试。</translation>
    </message>
    <message numerus="yes">
        <source>An interrupted deletion was finished; %Ln file(s) removed</source>
        <translation>
            <numerusform>已完成中断的删除；移除了 %Ln 个文件</numerusform>
        </translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>What is to be deleted is in a table that is not shown now: %1. Delete it?</source>
        <translation>要删除的内容位于当前未显示的表格中：%1。确定删除吗？</translation>
    </message>
    <message>
        <source>The selection has changed meanwhile, so nothing was deleted. Select again what is to go.</source>
        <translation>其间选择已改变，因此没有删除任何内容。请重新选择要删除的内容。</translation>
    </message>
    <message numerus="yes">
        <source>Of %1, %Ln image(s) still wait to be sent to %2. Once they are deleted they cannot be sent any more. Delete them?</source>
        <translation>
            <numerusform>%1：仍有 %Ln 幅图像等待发送到 %2。删除后将无法再发送。要删除吗？</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Deleted: %1; %Ln file(s) could not be removed</source>
        <translation>
            <numerusform>已删除：%1；%Ln 个文件无法删除</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Of %1, %Ln image(s) still wait to be uploaded. Once they are deleted they cannot be uploaded any more. Delete them?</source>
        <translation>
            <numerusform>%1：仍有 %Ln 幅图像等待上传。删除后将无法再上传。要删除吗？</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DeletionLeftovers</name>
    <message>
        <source>The folder or the file is locked for you.</source>
        <translation>您没有修改此文件夹或文件的权限。</translation>
    </message>
    <message>
        <source>The disk can only be read.</source>
        <translation>磁盘为只读。</translation>
    </message>
    <message>
        <source>It is a folder.</source>
        <translation>这是一个文件夹。</translation>
    </message>
    <message>
        <source>Another program uses it.</source>
        <translation>正被其他程序使用。</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>重试(&amp;T)</translation>
    </message>
    <message>
        <source>Files That Could Not Be Removed</source>
        <translation>未能移除的文件</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>原因</translation>
    </message>
    <message>
        <source>Files that could not be removed</source>
        <translation>未能移除的文件</translation>
    </message>
    <message>
        <source>Each file that is still on the disk, and why</source>
        <translation>仍在磁盘上的每个文件及其原因</translation>
    </message>
    <message>
        <source>Try to remove these files once more</source>
        <translation>再次尝试移除这些文件</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Leave these files where they are</source>
        <translation>将这些文件保留在原处</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>All of these files have been removed, or belong to records again.</source>
        <translation>这些文件已全部移除，或已重新属于某些记录。</translation>
    </message>
    <message numerus="yes">
        <source>The records are deleted, but %Ln of their file(s) are still on the disk. Remove what locks them and try again.</source>
        <translation>
            <numerusform>记录已删除，但仍有 %Ln 个文件留在磁盘上。请解除锁定后重试。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) still could not be removed. Remove what locks them and try again.</source>
        <translation>
            <numerusform>仍有 %Ln 个文件无法删除。请解除锁定后重试。</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>EditController</name>
    <message>
        <source>&amp;Edit Cell</source>
        <translation>编辑单元格(&amp;E)</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>未保存的更改</translation>
    </message>
    <message>
        <source>There are changes that have not been submitted. Drop them?</source>
        <translation>有尚未提交的更改。是否放弃?</translation>
    </message>
</context>
<context>
    <name>ExportController</name>
    <message>
        <source>Export &amp;As…</source>
        <translation>导出为(&amp;A)…</translation>
    </message>
    <message>
        <source>Export what is selected as folders, as a ZIP archive or with a DICOMDIR</source>
        <translation>将所选内容导出为文件夹、ZIP 压缩包或带 DICOMDIR 的介质</translation>
    </message>
    <message>
        <source>Show the export</source>
        <translation>显示导出</translation>
    </message>
    <message>
        <source>An export did not go well</source>
        <translation>有导出未全部成功</translation>
    </message>
    <message numerus="yes">
        <source>, %n waiting</source>
        <translation>
            <numerusform>，另有 %n 个等待中</numerusform>
        </translation>
    </message>
    <message>
        <source>Export As</source>
        <translation>导出为</translation>
    </message>
    <message>
        <source>Nothing is selected. Select patients, studies, series or images first.</source>
        <translation>没有选择任何内容。请先选择患者、检查、序列或图像。</translation>
    </message>
    <message>
        <source>Exported %1 to %2</source>
        <translation>已导出 %1 到 %2</translation>
    </message>
    <message numerus="yes">
        <source>Export: %1 of %Ln file(s)</source>
        <translation>
            <numerusform>导出：%1 / %Ln 个文件</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ExportDialog</name>
    <message>
        <source>Export As</source>
        <translation>导出为</translation>
    </message>
    <message>
        <source>%1, being counted…</source>
        <translation>%1，正在统计…</translation>
    </message>
    <message>
        <source>&amp;Read everything back and compare it</source>
        <translation>全部读回并比较(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Compress what becomes smaller by it</source>
        <translation>压缩可缩小的文件(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>导出(&amp;E)</translation>
    </message>
    <message>
        <source>Make</source>
        <translation>导出形式</translation>
    </message>
    <message>
        <source>C&amp;hoose…</source>
        <translation>选择(&amp;H)…</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>&amp;Archive:</source>
        <translation>压缩包(&amp;A):</translation>
    </message>
    <message>
        <source>&amp;Folder:</source>
        <translation>文件夹(&amp;F):</translation>
    </message>
    <message>
        <source>Archive to make</source>
        <translation>要创建的压缩包</translation>
    </message>
    <message>
        <source>Folder to export to</source>
        <translation>导出到的文件夹</translation>
    </message>
    <message>
        <source>Images</source>
        <comment>the name of an archive</comment>
        <translation>图像</translation>
    </message>
    <message>
        <source>ZIP archives (*.zip)</source>
        <translation>ZIP 压缩包 (*.zip)</translation>
    </message>
    <message>
        <source>Choose where to export to.</source>
        <translation>请选择导出位置。</translation>
    </message>
    <message>
        <source>There is no folder %1.</source>
        <translation>没有文件夹 %1。</translation>
    </message>
    <message>
        <source>Name the archive to make.</source>
        <translation>请指定要创建的压缩包的名称。</translation>
    </message>
    <message>
        <source>The folder %1 cannot be written.</source>
        <translation>无法写入文件夹 %1。</translation>
    </message>
    <message>
        <source>Replace the archive %1?</source>
        <translation>是否替换压缩包 %1?</translation>
    </message>
    <message>
        <source>%1, which could not be counted</source>
        <translation>%1，无法统计数量</translation>
    </message>
</context>
<context>
    <name>ExportProgressDialog</name>
    <message>
        <source>Export to %1</source>
        <translation>导出到 %1</translation>
    </message>
    <message>
        <source>Progress of the export</source>
        <translation>导出进度</translation>
    </message>
    <message>
        <source>Files that did not go well</source>
        <translation>未成功的文件</translation>
    </message>
    <message>
        <source>&amp;Open Folder</source>
        <translation>打开文件夹(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>重试(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Cancel Export</source>
        <translation>取消导出(&amp;C)</translation>
    </message>
    <message>
        <source>Waiting for another export to end…</source>
        <translation>正在等待其他导出结束…</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>另有 %n 个</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln file(s), %2 of %3, %4/s</source>
        <translation>
            <numerusform>%1 / %Ln 个文件，%2 / %3，%4/秒</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ExportText</name>
    <message>
        <source>the file is not there</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>无法读取文件</translation>
    </message>
    <message>
        <source>the file changed while it was read</source>
        <translation>文件在读取过程中发生了变化</translation>
    </message>
    <message>
        <source>the copy cannot be written</source>
        <translation>无法写入副本</translation>
    </message>
    <message>
        <source>the copy is not what was written</source>
        <translation>副本与写入的内容不一致</translation>
    </message>
    <message>
        <source>copied, but the DICOMDIR cannot list it</source>
        <translation>已复制，但无法列入 DICOMDIR</translation>
    </message>
    <message>
        <source>something of its name is there already</source>
        <translation>目标位置已有同名项</translation>
    </message>
    <message>
        <source>The disk is full. Nothing was left there.</source>
        <translation>磁盘已满。目标位置未留下任何内容。</translation>
    </message>
    <message>
        <source>There is not enough room: %1 are needed, %2 are free.</source>
        <translation>空间不足：需要 %1，可用 %2。</translation>
    </message>
    <message>
        <source>Folders with the &amp;names of patients, studies and series</source>
        <translation>以患者、检查和序列名称命名的文件夹(&amp;N)</translation>
    </message>
    <message>
        <source>One &amp;ZIP archive</source>
        <translation>一个 ZIP 压缩包(&amp;Z)</translation>
    </message>
    <message>
        <source>DICOM &amp;media with a DICOMDIR, for a disc or a stick</source>
        <translation>带 DICOMDIR 的 DICOM 介质(&amp;M)，用于光盘或 U 盘</translation>
    </message>
    <message>
        <source>Looking up the files…</source>
        <translation>正在查找文件…</translation>
    </message>
    <message>
        <source>Copying…</source>
        <translation>正在复制…</translation>
    </message>
    <message>
        <source>Reading back and comparing…</source>
        <translation>正在读回并比较…</translation>
    </message>
    <message>
        <source>Finishing…</source>
        <translation>正在完成…</translation>
    </message>
    <message>
        <source>The export was cancelled. Nothing was left there.</source>
        <translation>导出已取消。目标位置未留下任何内容。</translation>
    </message>
    <message>
        <source>The index cannot be read</source>
        <translation>无法读取索引</translation>
    </message>
    <message>
        <source>What is selected has no files.</source>
        <translation>所选内容没有文件。</translation>
    </message>
    <message>
        <source>Nothing can be written to %1</source>
        <translation>无法写入 %1</translation>
    </message>
    <message>
        <source>The folder %1 has a DICOMDIR or a folder DICOM already. Choose another folder.</source>
        <translation>文件夹 %1 中已有 DICOMDIR 或名为 DICOM 的文件夹。请选择其他文件夹。</translation>
    </message>
    <message>
        <source>What was read back is not what was written. Nothing was left there; the disk or the stick may be damaged.</source>
        <translation>读回的内容与写入的不一致。目标位置未留下任何内容；磁盘或 U 盘可能已损坏。</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a file: what is the matter with it</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Folders with n&amp;umbers, as Export makes them</source>
        <translation>以编号命名的文件夹(&amp;U)，与“导出”相同</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between names</comment>
        <translation>、</translation>
    </message>
    <message>
        <source>Exported %1 to %2.</source>
        <translation>已导出 %1 到 %2。</translation>
    </message>
    <message numerus="yes">
        <source>%Ln folder(s) were made there: %1.</source>
        <translation>
            <numerusform>在那里建立了 %Ln 个文件夹：%1。</numerusform>
        </translation>
    </message>
    <message>
        <source>All of it was read back and is what was written.</source>
        <translation>已全部回读，与写入的内容一致。</translation>
    </message>
    <message numerus="yes">
        <source>Not everything went well: %Ln file(s).</source>
        <translation>
            <numerusform>%Ln 个文件有问题。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s), %1</source>
        <translation>
            <numerusform>%Ln 个文件，%1</numerusform>
        </translation>
    </message>
    <message>
        <source>What was exported was read back and is what was written.</source>
        <translation>已导出的部分已回读，与写入的内容一致。</translation>
    </message>
</context>
<context>
    <name>ImportCentre</name>
    <message>
        <source>Importing…</source>
        <translation>正在导入…</translation>
    </message>
    <message>
        <source>Importing %1 of %2 files found so far</source>
        <translation>正在导入第 %1 个文件，目前已找到 %2 个</translation>
    </message>
    <message>
        <source>Importing %1 of %2 files</source>
        <translation>正在导入 %1 / %2 个文件</translation>
    </message>
</context>
<context>
    <name>JobText</name>
    <message numerus="yes">
        <source>%n taken with a warning</source>
        <translation>
            <numerusform>%n 幅已接收但有警告</numerusform>
        </translation>
    </message>
    <message>
        <source>Chosen images</source>
        <translation>选择的图像</translation>
    </message>
    <message>
        <source>Forwarded import</source>
        <translation>转发的导入</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) still to be looked at</source>
        <translation>
            <numerusform>还有 %n 个文件待检查</numerusform>
        </translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>等待中</translation>
    </message>
    <message>
        <source>Being sent</source>
        <translation>正在发送</translation>
    </message>
    <message>
        <source>Taken with a warning</source>
        <translation>已接收但有警告</translation>
    </message>
    <message>
        <source>Taken</source>
        <translation>已接收</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>失败</translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) skipped: not DICOM</source>
        <translation>
            <numerusform>已跳过 %Ln 个文件：不是 DICOM</numerusform>
        </translation>
    </message>
    <message>
        <source>Cancelled: %1 to %2, %3</source>
        <comment>whose images, where to, how many</comment>
        <translation>已取消：%1 → %2，%3</translation>
    </message>
    <message>
        <source>%1 to %2: %3</source>
        <comment>whose images, where to, how many</comment>
        <translation>%1 → %2：%3</translation>
    </message>
    <message>
        <source>%1. Next attempt at %2.</source>
        <translation>%1。将于 %2 重试。</translation>
    </message>
</context>
<context>
    <name>LaunchedProgram</name>
    <message>
        <source>It ended at once with the code %1.</source>
        <translation>程序立即退出，代码 %1。</translation>
    </message>
    <message>
        <source>It crashed at once.</source>
        <translation>程序立即崩溃。</translation>
    </message>
</context>
<context>
    <name>LauncherButtons</name>
    <message>
        <source>Opens what is selected; nothing is.</source>
        <translation>打开所选内容；当前没有选择。</translation>
    </message>
    <message>
        <source>Opens %1</source>
        <translation>打开 %1</translation>
    </message>
    <message>
        <source>Is being started…</source>
        <translation>正在启动…</translation>
    </message>
    <message>
        <source>Is running</source>
        <translation>正在运行</translation>
    </message>
    <message>
        <source>%1 is not available.</source>
        <translation>“%1”不可用。</translation>
    </message>
    <message>
        <source>Stop %1 (process %2)</source>
        <translation>停止 %1 (进程 %2)</translation>
    </message>
    <message>
        <source>Running: %1</source>
        <translation>正在运行：%1</translation>
    </message>
    <message>
        <source>Running: %1 programs</source>
        <translation>正在运行：%1 个程序</translation>
    </message>
    <message>
        <source>Programs that were started here; click to stop one.</source>
        <translation>在此启动的程序；单击可停止其一。</translation>
    </message>
</context>
<context>
    <name>LauncherCentre</name>
    <message>
        <source>No program is configured for &quot;%1&quot;. Choose one under Tools &gt; Settings &gt; Applications.</source>
        <translation>“%1”尚未配置程序。请在 工具 &gt; 设置 &gt; 应用程序 中选择。</translation>
    </message>
    <message>
        <source>Nothing is selected. Select patients, studies, series or images first.</source>
        <translation>没有选择任何内容。请先选择患者、检查、序列或图像。</translation>
    </message>
    <message>
        <source>The index names no image files of what is selected (%1).</source>
        <translation>索引中没有所选内容 (%1) 的图像文件。</translation>
    </message>
    <message>
        <source>The program is not started: the value &quot;%1&quot; of the selected records would be taken for an option.</source>
        <translation>程序未启动：所选记录的值“%1”会被当作选项。</translation>
    </message>
    <message>
        <source>The list of the selected files cannot be written to the folder %1.</source>
        <translation>无法将所选文件的列表写入文件夹 %1。</translation>
    </message>
    <message>
        <source>The program for &quot;%1&quot; did not come up: %2
%3</source>
        <translation>“%1”的程序未能启动：%2
%3</translation>
    </message>
</context>
<context>
    <name>LogCopyBar</name>
    <message>
        <source>Copy &amp;Log</source>
        <translation>复制日志(&amp;L)</translation>
    </message>
    <message>
        <source>Stop Copyin&amp;g</source>
        <translation>停止复制(&amp;G)</translation>
    </message>
    <message>
        <source>Copying: %1 of %2 objects</source>
        <translation>正在复制：%1 / %2 个对象</translation>
    </message>
    <message>
        <source>Put the selected objects, or all where none is selected, on the clipboard</source>
        <translation>将所选对象复制到剪贴板；未选择时复制全部</translation>
    </message>
    <message>
        <source>Leave the clipboard as it is</source>
        <translation>保持剪贴板不变</translation>
    </message>
    <message>
        <source>Nothing was copied</source>
        <translation>未复制任何内容</translation>
    </message>
    <message>
        <source>The log cannot be read at the moment; nothing was copied</source>
        <translation>目前无法读取日志；未复制任何内容</translation>
    </message>
    <message>
        <source>%1; no more are copied at once. Select the others to copy them, too</source>
        <translation>%1；一次最多复制这么多。请选择其余对象另行复制</translation>
    </message>
    <message numerus="yes">
        <source>Copying %Ln object(s)…</source>
        <translation>
            <numerusform>正在复制 %Ln 个对象…</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln object(s) copied</source>
        <translation>
            <numerusform>已复制 %Ln 个对象</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PictureText</name>
    <message>
        <source>IMG</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>SR</source>
        <translation>SR</translation>
    </message>
    <message>
        <source>Structured report</source>
        <translation>结构化报告</translation>
    </message>
    <message>
        <source>PDF</source>
        <translation>PDF</translation>
    </message>
    <message>
        <source>Document (PDF or other)</source>
        <translation>文档 (PDF 或其他)</translation>
    </message>
    <message>
        <source>KO</source>
        <translation>KO</translation>
    </message>
    <message>
        <source>List of key objects</source>
        <translation>关键对象列表</translation>
    </message>
    <message>
        <source>PR</source>
        <translation>PR</translation>
    </message>
    <message>
        <source>Presentation state</source>
        <translation>显示状态</translation>
    </message>
    <message>
        <source>ECG</source>
        <translation>心电</translation>
    </message>
    <message>
        <source>Waveform</source>
        <translation>波形</translation>
    </message>
    <message>
        <source>PLAN</source>
        <translation>计划</translation>
    </message>
    <message>
        <source>Radiotherapy plan</source>
        <translation>放疗计划</translation>
    </message>
    <message>
        <source>STRUCT</source>
        <translation>结构</translation>
    </message>
    <message>
        <source>Radiotherapy structures</source>
        <translation>放疗结构</translation>
    </message>
    <message>
        <source>REG</source>
        <translation>配准</translation>
    </message>
    <message>
        <source>Registration</source>
        <translation>配准</translation>
    </message>
    <message>
        <source>HP</source>
        <translation>方案</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>方案</translation>
    </message>
    <message>
        <source>MEAS</source>
        <translation>测量</translation>
    </message>
    <message>
        <source>Measurements</source>
        <translation>测量</translation>
    </message>
    <message>
        <source>RAW</source>
        <translation>原始</translation>
    </message>
    <message>
        <source>Raw data</source>
        <translation>原始数据</translation>
    </message>
    <message>
        <source>VIDEO</source>
        <translation>视频</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>视频</translation>
    </message>
    <message>
        <source>LUT</source>
        <translation>LUT</translation>
    </message>
    <message>
        <source>Colour palette</source>
        <translation>调色板</translation>
    </message>
    <message>
        <source>DIR</source>
        <translation>目录</translation>
    </message>
    <message>
        <source>Directory of a medium</source>
        <translation>介质目录</translation>
    </message>
    <message>
        <source>?</source>
        <translation>?</translation>
    </message>
    <message>
        <source>Object without a picture</source>
        <translation>无图像的对象</translation>
    </message>
    <message>
        <source>The file cannot be opened: it is not there, or may not be read.</source>
        <translation>无法打开文件：文件不存在或没有读取权限。</translation>
    </message>
    <message>
        <source>This is not a DICOM file.</source>
        <translation>这不是 DICOM 文件。</translation>
    </message>
    <message>
        <source>The file is damaged: its description cannot be read.</source>
        <translation>文件已损坏：无法读取其描述信息。</translation>
    </message>
    <message>
        <source>This object has no picture.</source>
        <translation>此对象没有图像。</translation>
    </message>
    <message>
        <source>The image is larger than the preview shows.</source>
        <translation>图像超出预览可显示的大小。</translation>
    </message>
    <message>
        <source>The file says it has more frames than any image can have.</source>
        <translation>文件声明的帧数超出了图像可能的帧数。</translation>
    </message>
    <message>
        <source>The file ends before the image does.</source>
        <translation>文件在图像结束之前中断。</translation>
    </message>
    <message>
        <source>The file has no such frame.</source>
        <translation>文件中没有该帧。</translation>
    </message>
    <message>
        <source>The preview does not know how this image is compressed.</source>
        <translation>预览不支持此图像的压缩方式。</translation>
    </message>
    <message>
        <source>The preview does not play videos.</source>
        <translation>预览不能播放视频。</translation>
    </message>
    <message>
        <source>The preview does not show images of this pixel format.</source>
        <translation>预览不支持此像素格式的图像。</translation>
    </message>
    <message>
        <source>The compressed image is damaged and cannot be decoded.</source>
        <translation>压缩图像已损坏，无法解码。</translation>
    </message>
</context>
<context>
    <name>PreviewActions</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Closes the preview</source>
        <translation>关闭预览</translation>
    </message>
    <message>
        <source>◀</source>
        <translation>◀</translation>
    </message>
    <message>
        <source>Previous image</source>
        <translation>上一幅图像</translation>
    </message>
    <message>
        <source>▶</source>
        <translation>▶</translation>
    </message>
    <message>
        <source>Next image</source>
        <translation>下一幅图像</translation>
    </message>
    <message>
        <source>First</source>
        <translation>首幅</translation>
    </message>
    <message>
        <source>First image</source>
        <translation>第一幅图像</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>末幅</translation>
    </message>
    <message>
        <source>Last image</source>
        <translation>最后一幅图像</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>窗</translation>
    </message>
    <message>
        <source>Window and level; drag on the image to change them</source>
        <translation>窗宽窗位；在图像上拖动可更改</translation>
    </message>
    <message>
        <source>Window and level</source>
        <translation>窗宽窗位</translation>
    </message>
    <message>
        <source>Invert</source>
        <translation>反相</translation>
    </message>
    <message>
        <source>Black for white</source>
        <translation>黑白反转</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>适合</translation>
    </message>
    <message>
        <source>Fits the image into the window</source>
        <translation>使图像适合窗口</translation>
    </message>
    <message>
        <source>1:1</source>
        <translation>1:1</translation>
    </message>
    <message>
        <source>One pixel of the image for one of the screen</source>
        <translation>图像像素与屏幕像素一一对应</translation>
    </message>
    <message>
        <source>−</source>
        <translation>−</translation>
    </message>
    <message>
        <source>Smaller</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>+</source>
        <translation>+</translation>
    </message>
    <message>
        <source>Larger</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>播放</translation>
    </message>
    <message>
        <source>Plays the images one after the other</source>
        <translation>依次播放图像</translation>
    </message>
    <message>
        <source> images/s</source>
        <translation> 幅/秒</translation>
    </message>
    <message>
        <source>Images a second</source>
        <translation>每秒图像数</translation>
    </message>
    <message>
        <source>How fast the images play</source>
        <translation>图像播放速度</translation>
    </message>
    <message>
        <source>From the file</source>
        <translation>文件中的窗值</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>File, %1</source>
        <translation>文件，%1</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
</context>
<context>
    <name>PreviewBanner</name>
    <message>
        <source>Not for diagnosis</source>
        <translation>不可用于诊断</translation>
    </message>
    <message>
        <source>Series %1</source>
        <translation>序列 %1</translation>
    </message>
</context>
<context>
    <name>PreviewFooter</name>
    <message>
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Goes to an image</source>
        <translation>转到某幅图像</translation>
    </message>
    <message>
        <source>Image %1 of %2</source>
        <translation>图像 %1 / %2</translation>
    </message>
    <message>
        <source>W %1  L %2</source>
        <translation>窗宽 %1  窗位 %2</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>PreviewWindow</name>
    <message>
        <source>Preview (not for diagnosis)</source>
        <translation>预览 (不可用于诊断)</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Loading…</source>
        <translation>正在加载…</translation>
    </message>
    <message>
        <source>There is no image to show.</source>
        <translation>没有可显示的图像。</translation>
    </message>
</context>
<context>
    <name>QueryPanelController</name>
    <message>
        <source>The query has found 1 patient.</source>
        <translation>查询找到 1 位患者。</translation>
    </message>
    <message>
        <source>The query has found %1 patients.</source>
        <translation>查询找到 %1 位患者。</translation>
    </message>
    <message>
        <source>The patient tree fills the tables.</source>
        <translation>表格内容由患者树提供。</translation>
    </message>
</context>
<context>
    <name>QueryPanelDock</name>
    <message>
        <source>Patient Query</source>
        <translation>患者查询</translation>
    </message>
    <message>
        <source>&amp;Query Panel</source>
        <translation>查询面板(&amp;Q)</translation>
    </message>
</context>
<context>
    <name>QueryRetrieveWindow</name>
    <message>
        <source>Query/Retrieve</source>
        <translation>查询/获取</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>归档服务器</translation>
    </message>
    <message>
        <source>One of the DICOM destinations of the settings</source>
        <translation>设置中的 DICOM 目标节点之一</translation>
    </message>
    <message>
        <source>Arc&amp;hive:</source>
        <translation>归档服务器(&amp;H):</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>搜索(&amp;S)</translation>
    </message>
    <message>
        <source>Ask the archive</source>
        <translation>询问归档服务器</translation>
    </message>
    <message>
        <source>Sto&amp;p</source>
        <translation>停止(&amp;P)</translation>
    </message>
    <message>
        <source>End the search; what was found stays</source>
        <translation>结束搜索；已找到的内容会保留</translation>
    </message>
    <message>
        <source>Clear &amp;fields</source>
        <translation>清空条件(&amp;F)</translation>
    </message>
    <message>
        <source>Empty all fields of the search</source>
        <translation>清空所有搜索条件</translation>
    </message>
    <message>
        <source>Clear fields</source>
        <translation>清空条件</translation>
    </message>
    <message>
        <source>Retrie&amp;ve</source>
        <translation>获取(&amp;V)</translation>
    </message>
    <message>
        <source>Bring what is chosen into the index</source>
        <translation>将所选内容获取到索引</translation>
    </message>
    <message>
        <source>No archive is configured. Add it to the DICOM destinations of the settings.</source>
        <translation>尚未配置归档服务器。请在设置的 DICOM 目标节点中添加。</translation>
    </message>
    <message>
        <source>Asking %1…</source>
        <translation>正在询问 %1…</translation>
    </message>
    <message>
        <source>What a search finds is listed here.</source>
        <translation>查询到的内容将列在此处。</translation>
    </message>
</context>
<context>
    <name>ReceiveController</name>
    <message>
        <source>%1 wanted to send, but is not among the senders.</source>
        <translation>%1 请求发送，但不在发送方列表中。</translation>
    </message>
    <message>
        <source>A sender was turned away: too many send at once.</source>
        <translation>已拒绝一个发送方：同时发送的过多。</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>磁盘已满。</translation>
    </message>
    <message>
        <source>An image could not be written: %1</source>
        <translation>有图像无法写入：%1</translation>
    </message>
    <message>
        <source>%1 sent an image under a wrong name: %2</source>
        <translation>%1 发送的图像与其声明的标识不符：%2</translation>
    </message>
    <message>
        <source>%1 sent what cannot be indexed: %2</source>
        <translation>%1 发送了无法索引的内容：%2</translation>
    </message>
    <message>
        <source>%1 broke off in the middle of an image.</source>
        <translation>%1 在图像传输中途中断。</translation>
    </message>
    <message>
        <source>Other content came under a known identifier and was kept aside: %1</source>
        <translation>收到已有标识符下的不同内容，已另行保存：%1</translation>
    </message>
    <message>
        <source>Received images wait, since the index takes none: %1</source>
        <translation>索引无法写入，已接收的图像正在等待：%1</translation>
    </message>
    <message>
        <source>Cannot receive</source>
        <translation>无法接收</translation>
    </message>
    <message>
        <source>Receiving… %1</source>
        <translation>正在接收… %1</translation>
    </message>
    <message>
        <source>Received %1</source>
        <translation>已接收 %1</translation>
    </message>
    <message>
        <source>Ready to receive</source>
        <translation>接收就绪</translation>
    </message>
    <message>
        <source>Listening on port %1</source>
        <translation>正在监听端口 %1</translation>
    </message>
    <message>
        <source>Received: %1, refused: %2, kept aside: %3</source>
        <translation>已接收：%1，已拒绝：%2，另行保存：%3</translation>
    </message>
    <message>
        <source>Last problem: %1</source>
        <translation>最近的问题：%1</translation>
    </message>
    <message>
        <source>All problems: %1</source>
        <translation>所有问题：%1</translation>
    </message>
    <message>
        <source>The address to receive on is none of this computer&apos;s: %1</source>
        <translation>接收地址不是本机的地址：%1</translation>
    </message>
    <message>
        <source>Another program listens on port %1 already. Choose another port in the settings, or end that program.</source>
        <translation>已有其他程序在监听端口 %1。请在设置中选择其他端口，或结束该程序。</translation>
    </message>
    <message>
        <source>The system does not let you listen on port %1; ports from 1024 on are usually free.</source>
        <translation>系统不允许您监听端口 %1；1024 及以上的端口通常可用。</translation>
    </message>
    <message>
        <source>Port %1 cannot be listened on: %2</source>
        <translation>无法监听端口 %1: %2</translation>
    </message>
    <message>
        <source>Receiving</source>
        <translation>接收</translation>
    </message>
    <message>
        <source>What comes cannot be kept beside the index: %1</source>
        <translation>收到的内容无法保存到索引旁：%1</translation>
    </message>
    <message numerus="yes">
        <source>%Ln received image(s) wait for the index</source>
        <translation>
            <numerusform>%Ln 幅已接收的图像等待写入索引</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 called %2; this workstation is %3</source>
        <translation>%1 呼叫的是 %2；本工作站为 %3</translation>
    </message>
    <message numerus="yes">
        <source>%1 · %Ln refused</source>
        <translation>
            <numerusform>%1 · 已拒绝 %Ln 次</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RetrievalList</name>
    <message>
        <source>Retrieva&amp;ls:</source>
        <translation>获取任务(&amp;L):</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
    <message>
        <source>Bring no more of it; what has come stays</source>
        <translation>不再继续获取；已收到的内容会保留</translation>
    </message>
    <message>
        <source>Retr&amp;y</source>
        <translation>重试(&amp;Y)</translation>
    </message>
    <message>
        <source>Ask for it again; what is in the index already stays as it is</source>
        <translation>重新请求；索引中已有的内容保持不变</translation>
    </message>
    <message>
        <source>Remove &amp;ended</source>
        <translation>移除已结束项(&amp;E)</translation>
    </message>
    <message>
        <source>Take what is over off this list</source>
        <translation>从此列表中移除已结束的任务</translation>
    </message>
    <message>
        <source>Retrievals</source>
        <translation>获取任务</translation>
    </message>
    <message>
        <source>What is on its way from archives</source>
        <translation>正从归档服务器获取的内容</translation>
    </message>
    <message>
        <source>Nothing has been retrieved since the program was started.</source>
        <translation>程序启动后尚未获取任何内容。</translation>
    </message>
</context>
<context>
    <name>RetrievalModel</name>
    <message>
        <source>What</source>
        <translation>内容</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>归档服务器</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>提示</translation>
    </message>
</context>
<context>
    <name>RetrieveController</name>
    <message>
        <source>Ctrl+R</source>
        <translation>Ctrl+R</translation>
    </message>
    <message>
        <source>Search an archive, and bring images from it into the index</source>
        <translation>搜索归档服务器，并将其图像获取到索引</translation>
    </message>
    <message>
        <source>Query/&amp;Retrieve…</source>
        <translation>查询/获取(&amp;R)…</translation>
    </message>
</context>
<context>
    <name>SearchBar</name>
    <message>
        <source>Find patients: name, ID, birth date, accession number, study (Ctrl+F)</source>
        <translation>查找患者：姓名、编号、出生日期、检查号、检查描述 (Ctrl+F)</translation>
    </message>
    <message>
        <source>Find patients</source>
        <translation>查找患者</translation>
    </message>
    <message>
        <source>Study date</source>
        <translation>检查日期</translation>
    </message>
    <message>
        <source>Study &amp;date:</source>
        <translation>检查日期(&amp;D):</translation>
    </message>
    <message>
        <source>All</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今天</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>昨天</translation>
    </message>
    <message>
        <source>Last 7 days</source>
        <translation>近 7 天</translation>
    </message>
    <message>
        <source>Last 30 days</source>
        <translation>近 30 天</translation>
    </message>
    <message>
        <source>No date</source>
        <translation>无日期</translation>
    </message>
    <message>
        <source>Arrived today</source>
        <translation>今日到达</translation>
    </message>
    <message>
        <source>Other selection</source>
        <translation>其他选择</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Patients shown: %1</source>
        <translation>显示的患者：%1</translation>
    </message>
</context>
<context>
    <name>SearchController</name>
    <message>
        <source>&amp;Find Patients…</source>
        <translation>查找患者(&amp;F)…</translation>
    </message>
    <message>
        <source>The index cannot be read</source>
        <translation>无法读取索引</translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation>正在搜索…</translation>
    </message>
</context>
<context>
    <name>SelectionStatus</name>
    <message>
        <source>%1 patient</source>
        <translation>%1 位患者</translation>
    </message>
    <message>
        <source>%1 patients</source>
        <translation>%1 位患者</translation>
    </message>
    <message>
        <source>%1 study</source>
        <translation>%1 个检查</translation>
    </message>
    <message>
        <source>%1 studies</source>
        <translation>%1 个检查</translation>
    </message>
    <message>
        <source>%1 series</source>
        <translation>%1 个序列</translation>
    </message>
    <message>
        <source>%1 image</source>
        <translation>%1 幅图像</translation>
    </message>
    <message>
        <source>%1 images</source>
        <translation>%1 幅图像</translation>
    </message>
</context>
<context>
    <name>SelectionSubject</name>
    <message>
        <source>(no name)</source>
        <translation>（无姓名）</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>some patients (their names)</comment>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>some records of patients</comment>
        <translation>%2的%1</translation>
    </message>
</context>
<context>
    <name>SendJobModel</name>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Destination</source>
        <translation>目标节点</translation>
    </message>
    <message>
        <source>Asked for</source>
        <translation>请求时间</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
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
        <source>Finished with failures</source>
        <translation>已完成，但有失败</translation>
    </message>
    <message>
        <source>%1, at %2:%3</source>
        <comment>AE title, at host:port</comment>
        <translation>%1，位于 %2:%3</translation>
    </message>
    <message>
        <source>Whose images</source>
        <translation>患者</translation>
    </message>
</context>
<context>
    <name>SendLogModel</name>
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
    <message>
        <source>Attempts</source>
        <translation>尝试次数</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>SOP instance UID</source>
        <translation>SOP 实例 UID</translation>
    </message>
</context>
<context>
    <name>Sentences</name>
    <message>
        <source>%1 %2</source>
        <comment>two sentences with their stops</comment>
        <translation>%1%2</translation>
    </message>
    <message>
        <source>; </source>
        <comment>between two remarks</comment>
        <translation>；</translation>
    </message>
</context>
<context>
    <name>SeriesModel</name>
    <message numerus="yes">
        <source>%Ln image(s)</source>
        <translation>
            <numerusform>%Ln 幅图像</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StartSequence</name>
    <message>
        <source>Screenshot: %1</source>
        <translation>截图：%1</translation>
    </message>
    <message>
        <source>The screenshot could not be saved as %1</source>
        <translation>截图无法保存为 %1</translation>
    </message>
</context>
<context>
    <name>StatusPanel</name>
    <message>
        <source>Ready. Drop folders or files anywhere to import them.</source>
        <translation>就绪。将文件夹或文件拖放到任意位置即可导入。</translation>
    </message>
    <message>
        <source>The index: %1</source>
        <translation>索引：%1</translation>
    </message>
    <message>
        <source>Patients %1   Studies %2   Series %3   Images %4</source>
        <translation>患者 %1   检查 %2   序列 %3   图像 %4</translation>
    </message>
    <message>
        <source>Selected: %1</source>
        <translation>已选择：%1</translation>
    </message>
</context>
<context>
    <name>StudyModel</name>
    <message>
        <source>Name</source>
        <translation>姓名</translation>
    </message>
    <message>
        <source>Patient ID</source>
        <translation>患者编号</translation>
    </message>
    <message>
        <source>Study date</source>
        <translation>检查日期</translation>
    </message>
    <message>
        <source>Modalities</source>
        <translation>设备类型</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>描述</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>图像</translation>
    </message>
</context>
<context>
    <name>ThumbnailDelegate</name>
    <message>
        <source>Loading…</source>
        <translation>正在加载…</translation>
    </message>
</context>
<context>
    <name>ThumbnailModel</name>
    <message numerus="yes">
        <source>%n image(s)</source>
        <translation>
            <numerusform>%n 幅图像</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ThumbnailView</name>
    <message>
        <source>Series of the selection</source>
        <translation>所选内容的序列</translation>
    </message>
    <message>
        <source>A click selects the series, a double click or Enter opens the preview</source>
        <translation>单击选择序列，双击或回车键打开预览</translation>
    </message>
    <message>
        <source>Select a patient, study or series to see its images.</source>
        <translation>选择患者、检查或序列以查看其图像。</translation>
    </message>
    <message numerus="yes">
        <source>… and %n more series</source>
        <translation>
            <numerusform>… 另有 %n 个序列</numerusform>
        </translation>
    </message>
    <message>
        <source>There are no images to show. Select a patient, study or series.</source>
        <translation>没有可显示的图像。请选择患者、检查或序列。</translation>
    </message>
</context>
<context>
    <name>TransferController</name>
    <message>
        <source>&amp;Transfers…</source>
        <translation>传输(&amp;T)…</translation>
    </message>
    <message>
        <source>Ctrl+Shift+T</source>
        <translation>Ctrl+Shift+T</translation>
    </message>
    <message>
        <source>Show the transfers</source>
        <translation>显示传输</translation>
    </message>
    <message>
        <source>Sends are waiting</source>
        <translation>有发送任务等待中</translation>
    </message>
    <message numerus="yes">
        <source>%Ln image(s) could not be sent</source>
        <translation>
            <numerusform>%Ln 幅图像未能发送</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TransfersWindow</name>
    <message>
        <source>Transfers</source>
        <translation>传输</translation>
    </message>
    <message>
        <source>What is not sent when the program ends goes on at its next start. Finished transfers are forgotten after a week.</source>
        <translation>程序退出时尚未发送的内容会在下次启动后继续发送。已完成的传输在一周后清除。</translation>
    </message>
    <message>
        <source>&amp;Transfers:</source>
        <translation>传输(&amp;T):</translation>
    </message>
    <message>
        <source>&amp;Pause</source>
        <translation>暂停(&amp;P)</translation>
    </message>
    <message>
        <source>Send nothing more for now</source>
        <translation>暂时不再发送</translation>
    </message>
    <message>
        <source>&amp;Resume</source>
        <translation>继续(&amp;R)</translation>
    </message>
    <message>
        <source>Go on with what was paused</source>
        <translation>继续已暂停的传输</translation>
    </message>
    <message>
        <source>Retr&amp;y</source>
        <translation>重试(&amp;Y)</translation>
    </message>
    <message>
        <source>&amp;Cancel Transfer</source>
        <translation>取消传输(&amp;C)</translation>
    </message>
    <message>
        <source>Send no more of it; what the destination has taken stays there</source>
        <translation>不再发送；目标节点已接收的内容保留在对方</translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation>移除(&amp;M)</translation>
    </message>
    <message>
        <source>Take it off this list, with its log</source>
        <translation>将其连同日志从此列表中移除</translation>
    </message>
    <message>
        <source>Remove &amp;Finished</source>
        <translation>移除已完成项(&amp;F)</translation>
    </message>
    <message>
        <source>Take all that ended without failures off this list</source>
        <translation>从此列表中移除所有无失败且已结束的传输</translation>
    </message>
    <message>
        <source>Objects of the transfer</source>
        <translation>传输的对象</translation>
    </message>
    <message>
        <source>&amp;Objects:</source>
        <translation>对象(&amp;O):</translation>
    </message>
    <message>
        <source>O&amp;nly failed ones</source>
        <translation>仅失败项(&amp;N)</translation>
    </message>
    <message>
        <source>The transfers cannot be kept on the disk: %1</source>
        <translation>传输无法保存到磁盘：%1</translation>
    </message>
    <message>
        <source>Send again what failed, and try at once a destination that did not answer</source>
        <translation>重新发送失败的内容，并立即重试未应答的目标节点</translation>
    </message>
    <message>
        <source>Nothing is being sent, and nothing has been in the last week.</source>
        <translation>目前没有发送任务，最近一周内也没有。</translation>
    </message>
    <message>
        <source>The objects of the chosen transfer are listed here.</source>
        <translation>所选传输任务的对象将列在此处。</translation>
    </message>
</context>
<context>
    <name>TreeController</name>
    <message>
        <source>Patie&amp;nt Tree</source>
        <translation>患者树(&amp;N)</translation>
    </message>
</context>
<context>
    <name>WindowChoice</name>
    <message>
        <source>Abdomen</source>
        <translation>腹部</translation>
    </message>
    <message>
        <source>Lung</source>
        <translation>肺</translation>
    </message>
    <message>
        <source>Bone</source>
        <translation>骨</translation>
    </message>
    <message>
        <source>Brain</source>
        <translation>脑</translation>
    </message>
</context>
<context>
    <name>WindowClosing</name>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
</context>
<context>
    <name>WorkstationSession</name>
    <message>
        <source>The language changes when the work that runs has ended.</source>
        <translation>正在进行的工作结束后切换语言。</translation>
    </message>
    <message>
        <source>The other index is opened when the work that runs has ended.</source>
        <translation>正在进行的工作结束后打开其他索引。</translation>
    </message>
    <message>
        <source>Open Index</source>
        <translation>打开索引</translation>
    </message>
</context>
<context>
    <name>WorkstationWindow</name>
    <message>
        <source>Patient Data Manager[*]</source>
        <translation>患者数据管理[*]</translation>
    </message>
    <message>
        <source>Imports are switched off by the settings.</source>
        <translation>设置中已关闭导入。</translation>
    </message>
    <message>
        <source>Start the workstation with --database FILE to use another index.</source>
        <translation>可用 --database FILE 启动工作站以使用其他索引。</translation>
    </message>
    <message>
        <source>No index</source>
        <translation>无索引</translation>
    </message>
    <message>
        <source>The index %1 is damaged: %2
What can still be read is shown. Copy the file away, start with a new index and import the images again; they are not touched.</source>
        <translation>索引 %1 已损坏：%2
仍可读取的内容会显示出来。请将该文件复制到别处，新建索引并重新导入图像；图像文件不受影响。</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>Patient Data Manager %1
Built with Qt %2</source>
        <translation>患者数据管理 %1
使用 Qt %2 构建</translation>
    </message>
    <message>
        <source>An import is running. Stop it and quit? What has been imported stays; importing the same folder again completes it.</source>
        <translation>正在导入。是否停止并退出? 已导入的内容会保留；再次导入同一文件夹即可完成。</translation>
    </message>
    <message>
        <source>The index is being checked, compacted or backed up. Stop that and quit? The index stays as it was; an unfinished backup is removed.</source>
        <translation>正在检查、压缩或备份索引。是否停止并退出? 索引保持原样；未完成的备份会被删除。</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>正在停止…</translation>
    </message>
    <message>
        <source>An export is running. Stop it and quit? What it has written so far is removed.</source>
        <translation>正在导出。是否停止并退出? 目前已写入的内容会被移除。</translation>
    </message>
    <message>
        <source>Images are being retrieved from an archive. Stop that and quit? What has come stays.</source>
        <translation>正在从归档服务器获取图像。是否停止并退出? 已收到的内容会保留。</translation>
    </message>
    <message>
        <source>Import Files</source>
        <translation>导入文件</translation>
    </message>
    <message>
        <source>All files (*);;ZIP archives (*.zip)</source>
        <translation>所有文件 (*);;ZIP 压缩包 (*.zip)</translation>
    </message>
    <message numerus="yes">
        <source>Imported %1 of %Ln file(s); %2 were there already, %3 were not taken</source>
        <translation>
            <numerusform>已导入 %1 / %Ln 个文件；%2 个原已存在，%3 个未采用</numerusform>
        </translation>
    </message>
    <message>
        <source>Images are on their way to or from the cloud. Quit? What has not come yet goes on at the next start.</source>
        <translation>正在向云端上传或从云端下载图像。要退出吗？未完成的传输会在下次启动时继续。</translation>
    </message>
    <message>
        <source>Patient data are being corrected. Stop that and quit? What has begun to be stored in the cloud comes to its end first; else nothing is changed.</source>
        <translation>正在更正患者数据。是否停止并退出？已开始存储到云端的内容会先完成；否则不作任何更改。</translation>
    </message>
    <message>
        <source>Anonymous copies are being made. Stop that and quit? Nothing of them is kept, except what the index has taken already.</source>
        <translation>正在生成匿名副本。要停止并退出吗？除索引已收入的内容外，不保留任何副本。</translation>
    </message>
</context>
</TS>
