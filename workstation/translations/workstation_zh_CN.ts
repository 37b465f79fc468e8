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
        <source>Takes the settings from DIR/config instead of the program&apos;s own.</source>
        <translation>从 DIR/config 而非程序自身的位置读取设置。</translation>
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
        <translation>正在运行: %1</translation>
    </message>
    <message>
        <source>Running: %1 programs</source>
        <translation>正在运行: %1 个程序</translation>
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
        <translation>“%1”的程序未能启动: %2
%3</translation>
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
        <translation>无法打开文件: 文件不存在或没有读取权限。</translation>
    </message>
    <message>
        <source>This is not a DICOM file.</source>
        <translation>这不是 DICOM 文件。</translation>
    </message>
    <message>
        <source>The file is damaged: its description cannot be read.</source>
        <translation>文件已损坏: 无法读取其描述信息。</translation>
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
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Goes to an image</source>
        <translation>转到某幅图像</translation>
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
    <name>SearchBar</name>
    <message>
        <source>Find patients: name, ID, birth date, accession number, study (Ctrl+F)</source>
        <translation>查找患者: 姓名、编号、出生日期、检查号、检查描述 (Ctrl+F)</translation>
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
        <translation>显示的患者: %1</translation>
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
    <name>StartSequence</name>
    <message>
        <source>Screenshot: %1</source>
        <translation>截图: %1</translation>
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
        <translation>索引: %1</translation>
    </message>
    <message>
        <source>Patients %1   Studies %2   Series %3   Images %4</source>
        <translation>患者 %1   检查 %2   序列 %3   图像 %4</translation>
    </message>
    <message>
        <source>Selected: %1</source>
        <translation>已选择: %1</translation>
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
        <source>The selection has no series.</source>
        <translation>所选内容没有序列。</translation>
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
        <translation>索引 %1 已损坏: %2
仍可读取的内容会显示出来。请将该文件复制到别处，新建索引并重新导入图像；图像文件不受影响。</translation>
    </message>
    <message>
        <source>Imported %1 of %2 files; %3 were there already, %4 were not taken</source>
        <translation>已导入 %1 / %2 个文件；%3 个已存在，%4 个未采用</translation>
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
        <source>Quit</source>
        <translation>退出</translation>
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
</context>
</TS>
