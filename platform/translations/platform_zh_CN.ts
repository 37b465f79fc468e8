<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AnonymizeForm</name>
    <message>
        <source>Anonymize</source>
        <translation>匿名化</translation>
    </message>
    <message>
        <source>&amp;Preview</source>
        <translation>预览(&amp;P)</translation>
    </message>
    <message>
        <source>Shows what would change in an image; nothing is written</source>
        <translation>显示图像中将发生的更改；不写入任何内容</translation>
    </message>
    <message>
        <source>&amp;Anonymize</source>
        <translation>匿名化(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>返回(&amp;B)</translation>
    </message>
    <message>
        <source>Looking up the images…</source>
        <translation>正在查找图像…</translation>
    </message>
    <message>
        <source>Anonymous copies are being made. Stop that and close? Nothing of them is kept, except what the index has taken already.</source>
        <translation>正在生成匿名副本。要停止并关闭吗？除索引已收入的内容外，不保留任何副本。</translation>
    </message>
</context>
<context>
    <name>AnonymizeOptionsPanel</name>
    <message>
        <source>What stays</source>
        <translation>保留内容</translation>
    </message>
    <message>
        <source>Names, numbers, addresses, institutions and devices always go; UIDs are replaced by new ones, the same every time. Pixels are not changed.</source>
        <translation>姓名、编号、地址、机构和设备信息始终移除；UID 替换为新的 UID，每次替换结果相同。像素不作更改。</translation>
    </message>
    <message>
        <source>&amp;Dates, moved</source>
        <translation>日期，平移后保留(&amp;D)</translation>
    </message>
    <message>
        <source>All dates of a patient move back by the same number of days, so that the time between studies stays. Otherwise dates and times go.</source>
        <translation>同一患者的所有日期提前相同的天数，检查之间的间隔保持不变。不勾选则移除日期和时间。</translation>
    </message>
    <message>
        <source>D&amp;escriptions, cleaned</source>
        <translation>描述，清理后保留(&amp;E)</translation>
    </message>
    <message>
        <source>Descriptions stay without words that stand among the names and numbers of the same image, and without long numbers. Nobody can promise that no other hint is left. Otherwise descriptions go.</source>
        <translation>保留描述，但去除与同一图像的姓名和编号相同的词以及较长的数字。无法保证不残留其他线索。不勾选则移除描述。</translation>
    </message>
    <message>
        <source>&amp;Sex, age, size and weight</source>
        <translation>性别、年龄、身高和体重(&amp;S)</translation>
    </message>
    <message>
        <source>Also smoking, pregnancy, allergies and special needs.</source>
        <translation>还包括吸烟、妊娠、过敏和特殊需求。</translation>
    </message>
    <message>
        <source>Attributes of device &amp;makers</source>
        <translation>设备厂商的属性(&amp;M)</translation>
    </message>
    <message>
        <source>What they hold, only the maker knows; names may be among it. Otherwise they go.</source>
        <translation>其内容只有厂商知道，可能包含姓名。不勾选则移除。</translation>
    </message>
    <message>
        <source>What patients are called</source>
        <translation>患者的名称</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>姓名</translation>
    </message>
    <message>
        <source>ID</source>
        <translation>编号</translation>
    </message>
    <message>
        <source>&amp;Name</source>
        <translation>姓名(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;ID</source>
        <translation>编号(&amp;I)</translation>
    </message>
    <message>
        <source>%1 stands for ten letters and digits that belong to the patient, the same every time.</source>
        <translation>%1 代表属于该患者的十位字母和数字，每次相同。</translation>
    </message>
    <message>
        <source>Names and IDs need plain letters, without accents, backslashes and equals signs, and no more than 48 of them.</source>
        <translation>姓名和编号须使用普通字母，不含重音符号、反斜杠和等号，且不超过 48 个字符。</translation>
    </message>
    <message>
        <source>Without %1 in the ID all patients become one.</source>
        <translation>编号中没有 %1 时，所有患者会合并为一个。</translation>
    </message>
</context>
<context>
    <name>AnonymizeOutputPanel</name>
    <message>
        <source>Where the copies go</source>
        <translation>副本的去向</translation>
    </message>
    <message>
        <source>Into a &amp;folder</source>
        <translation>保存到文件夹(&amp;F)</translation>
    </message>
    <message>
        <source>Into the inde&amp;x, as new patients</source>
        <translation>作为新患者加入索引(&amp;X)</translation>
    </message>
    <message>
        <source>Send to a DI&amp;COM node</source>
        <translation>发送到 DICOM 节点(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Upload to the cloud</source>
        <translation>上传到云端(&amp;U)</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>A new folder is made in it</source>
        <translation>将在其中新建一个文件夹</translation>
    </message>
    <message>
        <source>&amp;Browse…</source>
        <translation>浏览(&amp;B)…</translation>
    </message>
    <message>
        <source>Folder for the Copies</source>
        <translation>选择副本的文件夹</translation>
    </message>
    <message>
        <source>Choose a folder for the copies.</source>
        <translation>请选择保存副本的文件夹。</translation>
    </message>
    <message>
        <source>There is no such folder.</source>
        <translation>没有此文件夹。</translation>
    </message>
    <message>
        <source>The folder cannot be written to.</source>
        <translation>无法写入此文件夹。</translation>
    </message>
</context>
<context>
    <name>AnonymizeRunPage</name>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Save Report…</source>
        <translation>保存报告(&amp;S)…</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>返回(&amp;B)</translation>
    </message>
    <message>
        <source>Names in the pictures</source>
        <translation>图像中的姓名</translation>
    </message>
    <message>
        <source>I have looked at them, or know that nobody can be &amp;recognized</source>
        <translation>我已查看这些图像，或确认无法从中识别出任何人(&amp;R)</translation>
    </message>
    <message>
        <source>Keep &amp;All</source>
        <translation>全部保留(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Leave These Out</source>
        <translation>排除这些图像(&amp;L)</translation>
    </message>
    <message>
        <source>Copies that the index has not taken</source>
        <translation>未能导入索引的副本</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>重试(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Keep the Copies</source>
        <translation>保留副本(&amp;K)</translation>
    </message>
    <message>
        <source>Making anonymous copies: %1 of %2</source>
        <translation>正在生成匿名副本：%1 / %2</translation>
    </message>
    <message>
        <source>Taking the copies into the index…</source>
        <translation>正在将副本导入索引…</translation>
    </message>
    <message>
        <source>The copies are made. Before they leave:</source>
        <translation>副本已生成。送出之前：</translation>
    </message>
    <message>
        <source>The pixels are copied as they are: what is written in them stays.</source>
        <translation>像素按原样复制：写在图像中的文字会保留。</translation>
    </message>
    <message>
        <source>Images in which names may be seen</source>
        <translation>可能显示姓名的图像</translation>
    </message>
    <message>
        <source>All copies are still in %1. Try again once the cause is mended, keep them there to import them yourself within %2 days, or cancel: they are removed then, and what the index has taken stays.</source>
        <translation>所有副本仍在 %1 中。排除故障后请重试；也可将其保留在该处，并在 %2 天内自行导入；或者取消：副本将被移除，已导入索引的内容会保留。</translation>
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
        <source>Files that could not be copied</source>
        <translation>未能复制的文件</translation>
    </message>
    <message>
        <source>Save the Report for Your Own Use</source>
        <translation>保存报告供您自己使用</translation>
    </message>
    <message>
        <source>Texts (*.txt);;All files (*)</source>
        <translation>文本文件 (*.txt);;所有文件 (*)</translation>
    </message>
    <message>
        <source>The report cannot be saved: %1</source>
        <translation>无法保存报告：%1</translation>
    </message>
    <message>
        <source>&amp;Open in the Preview</source>
        <translation>在预览中打开(&amp;O)</translation>
    </message>
    <message>
        <source>Look at the chosen image, and from there at the others; Enter in the list does the same</source>
        <translation>查看选中的图像，并可由此查看其他图像；在列表中按回车键效果相同</translation>
    </message>
</context>
<context>
    <name>AnonymizeSetupPage</name>
    <message>
        <source>Options</source>
        <translation>选项</translation>
    </message>
    <message>
        <source>anonymized %1</source>
        <translation>匿名化 %1</translation>
    </message>
    <message>
        <source>Tick patients or studies first.</source>
        <translation>请先勾选患者或检查。</translation>
    </message>
</context>
<context>
    <name>AnonymizeText</name>
    <message>
        <source>The file cannot be read.</source>
        <translation>无法读取文件。</translation>
    </message>
    <message>
        <source>The file is not DICOM.</source>
        <translation>该文件不是 DICOM 文件。</translation>
    </message>
    <message>
        <source>The file holds no object of a patient&apos;s study.</source>
        <translation>该文件不含属于患者检查的对象。</translation>
    </message>
    <message>
        <source>The file is damaged: nobody can tell all that it holds.</source>
        <translation>文件已损坏：无法确定其全部内容。</translation>
    </message>
    <message>
        <source>The file&apos;s header is larger than that of any real object.</source>
        <translation>该文件的文件头大于任何实际对象的文件头。</translation>
    </message>
    <message>
        <source>The copy cannot be written.</source>
        <translation>无法写入副本。</translation>
    </message>
    <message>
        <source>The disk is full.</source>
        <translation>磁盘已满。</translation>
    </message>
    <message>
        <source>The dictionary of DICOM attributes is not installed.</source>
        <translation>未安装 DICOM 属性字典。</translation>
    </message>
    <message>
        <source>It was stopped.</source>
        <translation>已停止。</translation>
    </message>
    <message>
        <source>The key of this site, %1, may be read by others. Make it readable for its owner alone: with it, anybody can tell who is behind a pseudonym.</source>
        <translation>本站点的密钥 %1 可能被他人读取。请设为仅所有者可读：持有该密钥的任何人都能得知假名对应的真实患者。</translation>
    </message>
    <message>
        <source>The file %1 is not a key of this program.</source>
        <translation>文件 %1 不是本程序的密钥。</translation>
    </message>
    <message>
        <source>The key of this site, %1, cannot be read: %2</source>
        <translation>无法读取本站点的密钥 %1：%2</translation>
    </message>
    <message>
        <source>A key for this site cannot be written to %1: %2</source>
        <translation>无法将本站点的密钥写入 %1：%2</translation>
    </message>
    <message>
        <source>The ticked studies have no images.</source>
        <translation>勾选的检查没有图像。</translation>
    </message>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>无法创建文件夹 %1。</translation>
    </message>
    <message>
        <source>It says that names or faces can be seen in it.</source>
        <translation>图像声明其中可见姓名或面部。</translation>
    </message>
    <message>
        <source>It is of a kind that often shows names, and does not say that it shows none.</source>
        <translation>此类图像常显示姓名，且未声明不含姓名。</translation>
    </message>
    <message numerus="yes">
        <source>Names or faces may be seen in the picture itself of %n image(s).</source>
        <translation>
            <numerusform>%n 幅图像的画面中可能可见姓名或面部。</numerusform>
        </translation>
    </message>
    <message>
        <source>Stopped. Nothing has been kept.</source>
        <translation>已停止。未保留任何内容。</translation>
    </message>
    <message>
        <source>Nothing has been kept.</source>
        <translation>未保留任何内容。</translation>
    </message>
    <message>
        <source>No anonymous copy has been made.</source>
        <translation>未生成匿名副本。</translation>
    </message>
    <message numerus="yes">
        <source>%n anonymous copy(ies) made.</source>
        <translation>
            <numerusform>已生成 %n 个匿名副本。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) could not be copied.</source>
        <translation>
            <numerusform>%n 个文件未能复制。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n copy(ies) left out because names may be seen in the picture.</source>
        <translation>
            <numerusform>已排除 %n 个副本，因为画面中可能可见姓名。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) were replaced by an empty one.</source>
        <translation>
            <numerusform>%n 个文档已替换为空文档。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n copy(ies) of an earlier run, made otherwise, were in the index and stay there instead. Delete them first to have the new ones.</source>
        <translation>
            <numerusform>索引中已有以前用不同方式生成的 %n 个副本，予以保留，未替换为新副本。如需新副本，请先删除这些副本。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n copy(ies) that the index had not taken have been removed.</source>
        <translation>
            <numerusform>已移除未能导入索引的 %n 个副本。</numerusform>
        </translation>
    </message>
    <message>
        <source>The report names the original files. It is for your own use: do not hand it on with the copies.</source>
        <translation>报告中列有原始文件的名称，仅供您自己使用：请勿随副本一起转交。</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>Dates and times</source>
        <translation>日期和时间</translation>
    </message>
    <message>
        <source>moved by days that belong to the patient</source>
        <translation>按各患者对应的天数平移</translation>
    </message>
    <message>
        <source>Descriptions</source>
        <translation>描述</translation>
    </message>
    <message>
        <source>cleaned</source>
        <translation>已清理</translation>
    </message>
    <message>
        <source>Sex, age, size and weight</source>
        <translation>性别、年龄、身高和体重</translation>
    </message>
    <message>
        <source>kept</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>Attributes of device makers</source>
        <translation>设备厂商的属性</translation>
    </message>
    <message>
        <source>Patients are called %1, their IDs are %2</source>
        <translation>患者姓名为 %1，编号为 %2</translation>
    </message>
    <message>
        <source>Anonymous copies, %1</source>
        <translation>匿名副本，%1</translation>
    </message>
    <message>
        <source>Files: %1</source>
        <translation>文件：%1</translation>
    </message>
    <message>
        <source>Folder: %1</source>
        <translation>文件夹：%1</translation>
    </message>
    <message>
        <source>Reading it took too long. It may lie on a slow share: copy it to this computer first.</source>
        <translation>读取时间过长。文件可能位于较慢的共享位置：请先将其复制到本机。</translation>
    </message>
    <message>
        <source>Drawings or texts are hidden in bits of its picture.</source>
        <translation>图像的像素位中隐藏有图形或文字。</translation>
    </message>
    <message>
        <source>Its picture is packed in a way that may hold texts that are not seen.</source>
        <translation>图像的压缩方式可能含有不可见的文字。</translation>
    </message>
    <message numerus="yes">
        <source>%n ID(s) belonged to several patients, who were told apart by name and birth date. Their pseudonyms are others than in a run without that.</source>
        <translation>
            <numerusform>%n 个患者编号属于多名患者，已按姓名和出生日期区分。其化名与未区分时不同。</numerusform>
        </translation>
    </message>
</context>
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
    <name>AuthorityChoice</name>
    <message>
        <source>&amp;No Longer</source>
        <translation>不再信任(&amp;N)</translation>
    </message>
    <message>
        <source>Trust only the authorities of the system</source>
        <translation>仅信任系统的证书颁发机构</translation>
    </message>
    <message>
        <source>&amp;Trust an Authority…</source>
        <translation>信任证书颁发机构(&amp;T)…</translation>
    </message>
    <message>
        <source>Choose the certificate of the authority that your site&apos;s service is signed by</source>
        <translation>选择为贵单位的服务签发证书的颁发机构的证书</translation>
    </message>
    <message>
        <source>Trust an Authority</source>
        <translation>信任证书颁发机构</translation>
    </message>
    <message>
        <source>Certificates (*.pem *.crt *.cer);;All files (*)</source>
        <translation>证书 (*.pem *.crt *.cer);;所有文件 (*)</translation>
    </message>
    <message>
        <source>There is no certificate in %1.</source>
        <translation>%1 中没有证书。</translation>
    </message>
    <message>
        <source>Trusted: %1</source>
        <translation>已信任：%1</translation>
    </message>
</context>
<context>
    <name>ChangeModel</name>
    <message>
        <source>Tag</source>
        <translation>标签</translation>
    </message>
    <message>
        <source>Attribute</source>
        <translation>属性</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>当前值</translation>
    </message>
    <message>
        <source>In the copy</source>
        <translation>副本中的值</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n 个条目</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n byte(s)</source>
        <translation>
            <numerusform>%n 字节</numerusform>
        </translation>
    </message>
    <message>
        <source>removed</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>空</translation>
    </message>
    <message>
        <source>stays</source>
        <translation>保留</translation>
    </message>
</context>
<context>
    <name>ChangePreview</name>
    <message>
        <source>Number of the image</source>
        <translation>图像序号</translation>
    </message>
    <message>
        <source>Ima&amp;ge</source>
        <translation>图像(&amp;G)</translation>
    </message>
    <message>
        <source> of %1</source>
        <translation> / %1</translation>
    </message>
    <message>
        <source>The ticked studies have no images.</source>
        <translation>勾选的检查没有图像。</translation>
    </message>
    <message>
        <source>Reading…</source>
        <translation>正在读取…</translation>
    </message>
    <message numerus="yes">
        <source>%n attribute(s) change.</source>
        <translation>
            <numerusform>%n 个属性将更改。</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing changes.</source>
        <translation>没有更改。</translation>
    </message>
    <message>
        <source>What changes in the image, and texts that stay</source>
        <translation>图像中将更改的内容和保留的文字</translation>
    </message>
    <message numerus="yes">
        <source>%n text(s) stay as they are: read them.</source>
        <translation>
            <numerusform>%n 处文字保持原样：请阅读。</numerusform>
        </translation>
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
        <source>Allow passwords to travel &amp;unencrypted to http:// addresses</source>
        <translation>允许以未加密方式向 http:// 地址传输密码(&amp;U)</translation>
    </message>
    <message>
        <source>as the system says</source>
        <translation>使用系统设置</translation>
    </message>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
    <message>
        <source>HTTP</source>
        <translation>HTTP</translation>
    </message>
    <message>
        <source>SOCKS 5</source>
        <translation>SOCKS 5</translation>
    </message>
    <message>
        <source>Pro&amp;xy:</source>
        <translation>代理(&amp;X):</translation>
    </message>
    <message>
        <source>Proxy&apos;s &amp;host:</source>
        <translation>代理主机(&amp;H):</translation>
    </message>
    <message>
        <source>Proxy&apos;s por&amp;t:</source>
        <translation>代理端口(&amp;T):</translation>
    </message>
    <message>
        <source>Where studies are uploaded to. Takes effect at the next sign-in; signing out of the cloud clears the address.</source>
        <translation>上传检查的目标地址。下次登录时生效；退出云端登录会清除该地址。</translation>
    </message>
    <message>
        <source>The address of the cloud must begin with https:// or http:// and name a host, without a user or a password.</source>
        <translation>云端地址必须以 https:// 或 http:// 开头并包含主机名，不得包含用户名或密码。</translation>
    </message>
    <message>
        <source>The proxy has no host.</source>
        <translation>未填写代理主机。</translation>
    </message>
</context>
<context>
    <name>CloudQuestionForm</name>
    <message>
        <source>Patient &amp;name:</source>
        <translation>患者姓名(&amp;N):</translation>
    </message>
    <message>
        <source>Patient name</source>
        <translation>患者姓名</translation>
    </message>
    <message>
        <source>A part of the name, in any case</source>
        <translation>姓名的一部分，不区分大小写</translation>
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
        <source>Modality</source>
        <translation>设备类型</translation>
    </message>
    <message>
        <source>One that the study has; empty for all</source>
        <translation>检查包含的一种设备类型；留空表示全部</translation>
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
</context>
<context>
    <name>CloudStudyModel</name>
    <message>
        <source>Series %1</source>
        <comment>its number</comment>
        <translation>序列 %1</translation>
    </message>
    <message>
        <source>no</source>
        <translation>无</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message numerus="yes">
        <source>%n image(s)</source>
        <translation>
            <numerusform>%n 幅图像</numerusform>
        </translation>
    </message>
    <message>
        <source>all</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>（无姓名）</translation>
    </message>
    <message>
        <source>Patient</source>
        <translation>患者</translation>
    </message>
    <message>
        <source>Patient ID</source>
        <translation>患者编号</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>日期</translation>
    </message>
    <message>
        <source>Modality</source>
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
    <message>
        <source>In the index</source>
        <translation>索引中</translation>
    </message>
</context>
<context>
    <name>CloudStudyView</name>
    <message>
        <source>Studies found in the cloud</source>
        <translation>云端中找到的检查</translation>
    </message>
    <message>
        <source>Space checks a study or a series, Enter downloads what is checked</source>
        <translation>空格键勾选检查或序列，回车键下载已勾选的内容</translation>
    </message>
</context>
<context>
    <name>CorrectionChoices</name>
    <message>
        <source>Whose data</source>
        <translation>修改对象</translation>
    </message>
    <message>
        <source>&amp;This study alone: it goes to the patient with these data</source>
        <translation>仅此检查：归入具有这些信息的患者(&amp;T)</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>修改位置</translation>
    </message>
    <message>
        <source>Index and &amp;service</source>
        <translation>索引和服务(&amp;S)</translation>
    </message>
    <message>
        <source>Index &amp;only</source>
        <translation>仅索引(&amp;O)</translation>
    </message>
    <message numerus="yes">
        <source>&amp;All %Ln study(ies) of the patient</source>
        <translation>
            <numerusform>该患者的全部 %Ln 个检查(&amp;A)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CorrectionText</name>
    <message>
        <source>Name</source>
        <translation>姓名</translation>
    </message>
    <message>
        <source>Patient ID</source>
        <translation>患者编号</translation>
    </message>
    <message>
        <source>Birth date</source>
        <translation>出生日期</translation>
    </message>
    <message>
        <source>Sex</source>
        <translation>性别</translation>
    </message>
    <message>
        <source>Comments</source>
        <translation>备注</translation>
    </message>
    <message>
        <source>male</source>
        <translation>男</translation>
    </message>
    <message>
        <source>female</source>
        <translation>女</translation>
    </message>
    <message>
        <source>other</source>
        <translation>其他</translation>
    </message>
    <message>
        <source>Fetching the images from the service… %1</source>
        <translation>正在从服务获取图像… %1</translation>
    </message>
    <message>
        <source>Writing corrected images… %1 of %2</source>
        <translation>正在写入更正后的图像… %1 / %2</translation>
    </message>
    <message>
        <source>Storing… %1 of %2</source>
        <translation>正在存储… %1 / %2</translation>
    </message>
    <message>
        <source>Reading back from the service… %1 of %2</source>
        <translation>正在从服务读回… %1 / %2</translation>
    </message>
    <message>
        <source>Correcting the files on this computer… %1 of %2</source>
        <translation>正在更正本机上的文件… %1 / %2</translation>
    </message>
    <message>
        <source>Storing the images back as they were… %1 of %2</source>
        <translation>正在将图像按原样存回… %1 / %2</translation>
    </message>
    <message>
        <source>The study is not in the index any more.</source>
        <translation>此检查已不在索引中。</translation>
    </message>
    <message>
        <source>The index has a patient of these data already, with the same study.</source>
        <translation>索引中已有与此信息相同的患者，且其中有同一检查。</translation>
    </message>
    <message>
        <source>index and service</source>
        <translation>索引和服务</translation>
    </message>
    <message>
        <source>index only</source>
        <translation>仅索引</translation>
    </message>
    <message>
        <source>service only; the index had it already</source>
        <translation>仅服务；索引中原已如此</translation>
    </message>
    <message>
        <source>%1 in the index, %2 in the service</source>
        <translation>索引中为 %1，服务中为 %2</translation>
    </message>
    <message>
        <source>%1: %2 → %3 (%4)</source>
        <translation>%1：%2 → %3（%4）</translation>
    </message>
    <message>
        <source>Both had these values already.</source>
        <translation>两处原已是这些值。</translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) of this study in the workstation&apos;s store are corrected, too.</source>
        <translation>
            <numerusform>工作站存储区中此检查的 %Ln 个文件也已更正。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) of this study lie elsewhere and keep the old values: what is exported, sent or uploaded from here has them.</source>
        <translation>
            <numerusform>此检查有 %Ln 个文件位于其他位置，仍为旧值：从本机导出、发送或上传的内容将带有旧值。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) on this computer corrected.</source>
        <translation>
            <numerusform>已更正本机上的 %Ln 个文件。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) that lie elsewhere keep the old values.</source>
        <translation>
            <numerusform>位于其他位置的 %Ln 个文件仍为旧值。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln file(s) could not be written and keep the old values, such as %1</source>
        <translation>
            <numerusform>%Ln 个文件无法写入，仍为旧值，例如 %1</numerusform>
        </translation>
    </message>
    <message>
        <source>The file or object: %1</source>
        <translation>文件或对象：%1</translation>
    </message>
    <message>
        <source>The service and the index are as they were.</source>
        <translation>服务和索引均保持不变。</translation>
    </message>
    <message numerus="yes">
        <source>%Ln image(s) of the service corrected and read back.</source>
        <translation>
            <numerusform>服务中的 %Ln 幅图像已更正，并已读回核对。</numerusform>
        </translation>
    </message>
    <message>
        <source>The index had a patient of these data already: the studies were put there.</source>
        <translation>索引中已有与此信息相同的患者：检查已归入该患者。</translation>
    </message>
    <message>
        <source>Stopped. Nothing was changed.</source>
        <translation>已停止。未作任何更改。</translation>
    </message>
    <message>
        <source>Nothing was changed.</source>
        <translation>未作任何更改。</translation>
    </message>
    <message>
        <source>The service took the corrected images but still shows the old ones: it does not replace what it has. Its administrator can allow that.</source>
        <translation>服务已接收更正后的图像，但显示的仍是旧图像：它不会替换已有的内容。服务的管理员可以允许替换。</translation>
    </message>
    <message>
        <source>The service has this study under the new patient ID already.</source>
        <translation>服务中，新的患者编号下已有此检查。</translation>
    </message>
    <message>
        <source>It did not succeed, and what had been stored was taken back.</source>
        <translation>更正未成功，已存入的内容已撤回。</translation>
    </message>
    <message>
        <source>It was interrupted half-way. The index is as it was; the service gets back what it had as soon as you are signed in and it can be reached.</source>
        <translation>更正中途中断。索引保持不变；您登录且服务可以连接后，服务将立即恢复原有内容。</translation>
    </message>
    <message>
        <source>The service tells studies apart by the patient ID as well, and offers no way to remove the old one. One image is there under both IDs now: ask its administrator to remove the one under the new ID. The index is as it was.</source>
        <translation>服务也按患者编号区分检查，且不提供删除旧检查的方法。现有一幅图像同时存在于两个编号下：请联系服务的管理员删除新编号下的图像。索引保持不变。</translation>
    </message>
    <message>
        <source>An interrupted correction was finished.</source>
        <translation>已完成中断的更正。</translation>
    </message>
    <message>
        <source>An interrupted correction was taken back: the service has what it had before.</source>
        <translation>已撤回中断的更正：服务中的内容与更正前相同。</translation>
    </message>
    <message>
        <source>An interrupted correction is still to be taken back in the service.</source>
        <translation>中断的更正仍待在服务中撤回。</translation>
    </message>
    <message>
        <source>An interrupted correction could not be finished: the service has the corrected values, the index has not.</source>
        <translation>中断的更正未能完成：服务中已是更正后的值，索引中尚未更正。</translation>
    </message>
    <message>
        <source>An interrupted correction could not be finished.</source>
        <translation>中断的更正未能完成。</translation>
    </message>
    <message>
        <source>The index cannot be used: %1</source>
        <translation>无法使用索引：%1</translation>
    </message>
    <message>
        <source>The files on this computer are not finished: those that remain are corrected the next time that a study is opened here or the program starts.</source>
        <translation>本机上的文件尚未全部更正：其余文件将在下次于此处打开检查或启动程序时更正。</translation>
    </message>
    <message>
        <source>Nothing was changed: an earlier correction of these studies has not come to its end yet. What it began in the service needs you to be signed in there.</source>
        <translation>未作任何更改：此前对这些检查的更正尚未结束。若其已在服务中开始，需登录该服务后才能继续。</translation>
    </message>
    <message>
        <source>An interrupted correction could not be finished yet: the rest of it is left for the next time.</source>
        <translation>一项中断的更正尚未能完成：其余部分留待下次进行。</translation>
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
    <name>DownloadCloudDataForm</name>
    <message>
        <source>Download from the Cloud</source>
        <translation>从云端下载</translation>
    </message>
    <message>
        <source>Downloads</source>
        <translation>下载任务</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>搜索(&amp;S)</translation>
    </message>
    <message>
        <source>Look for studies in the cloud</source>
        <translation>在云端查找检查</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Keep what was found so far</source>
        <translation>保留目前已找到的内容</translation>
    </message>
    <message>
        <source>&amp;Download Checked</source>
        <translation>下载勾选项(&amp;D)</translation>
    </message>
    <message>
        <source>Bring the checked studies and series into the index</source>
        <translation>将勾选的检查和序列获取到索引</translation>
    </message>
    <message>
        <source>Signed in to %1 as %2</source>
        <translation>已登录 %1，用户：%2</translation>
    </message>
    <message>
        <source>the owner of a token</source>
        <translation>令牌的所有者</translation>
    </message>
    <message>
        <source>Nobody is signed in to the cloud.</source>
        <translation>尚未登录云端。</translation>
    </message>
    <message>
        <source>Search for a patient, an ID, a date or a modality.
Without any, the search lists all studies.</source>
        <translation>可按患者、编号、日期或设备类型搜索。
不填任何条件时，将列出所有检查。</translation>
    </message>
    <message>
        <source>Sign in to search the cloud: the main window asks for it when you open this window there.</source>
        <translation>请登录以搜索云端：从主窗口打开此窗口时会提示登录。</translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation>正在搜索…</translation>
    </message>
    <message>
        <source>Nothing found.</source>
        <translation>未找到任何内容。</translation>
    </message>
    <message numerus="yes">
        <source>Stopped. Found so far: %n study(s)</source>
        <translation>
            <numerusform>已停止。目前已找到：%n 个检查</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The first %n study(s) are shown; the service has more. Ask more closely to see them.</source>
        <translation>
            <numerusform>仅显示前 %n 个检查；服务中还有更多。请缩小搜索范围以查看。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Found: %n study(s)</source>
        <translation>
            <numerusform>已找到：%n 个检查</numerusform>
        </translation>
    </message>
    <message>
        <source>Check the studies or series that you want.</source>
        <translation>请勾选需要的检查或序列。</translation>
    </message>
</context>
<context>
    <name>DownloadListModel</name>
    <message>
        <source>Download</source>
        <translation>下载</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Speed</source>
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
</context>
<context>
    <name>DownloadListPanel</name>
    <message>
        <source>Downloads</source>
        <translation>下载任务</translation>
    </message>
    <message>
        <source>What is fetched from the cloud, and what was</source>
        <translation>正在从云端获取和已获取的内容</translation>
    </message>
    <message>
        <source>Sto&amp;p</source>
        <translation>停止(&amp;P)</translation>
    </message>
    <message>
        <source>Stop the chosen downloads; what is here stays</source>
        <translation>停止所选下载；已下载的内容会保留</translation>
    </message>
    <message>
        <source>&amp;Go On</source>
        <translation>继续(&amp;G)</translation>
    </message>
    <message>
        <source>Go on with the chosen downloads: only what is missing is fetched</source>
        <translation>继续所选下载：仅获取缺少的内容</translation>
    </message>
    <message>
        <source>R&amp;emove</source>
        <translation>移除(&amp;E)</translation>
    </message>
    <message>
        <source>Take the chosen downloads off this list; their images stay</source>
        <translation>从此列表中移除所选下载；其图像会保留</translation>
    </message>
    <message>
        <source>Nothing is being downloaded. Search above, check the studies or series that you want, and press Download Checked.</source>
        <translation>没有下载任务。请在上方搜索，勾选需要的检查或序列，然后点击“下载勾选项”。</translation>
    </message>
</context>
<context>
    <name>DownloadText</name>
    <message numerus="yes">
        <source>Done; %n image(s) kept aside, the index has others in their place or cannot read them</source>
        <translation>
            <numerusform>已完成；%n 幅图像已另行保存：索引中已有其他图像占用其位置，或索引无法读取这些图像</numerusform>
        </translation>
    </message>
    <message>
        <source>Done</source>
        <translation>已完成</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>等待中</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>正在下载</translation>
    </message>
    <message>
        <source>Being indexed</source>
        <translation>正在写入索引</translation>
    </message>
    <message>
        <source>Trying again soon</source>
        <translation>即将重试</translation>
    </message>
    <message>
        <source>Waiting for a sign-in</source>
        <translation>等待登录</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>已停止</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>%1/s</source>
        <comment>an amount of data in a second</comment>
        <translation>%1/秒</translation>
    </message>
</context>
<context>
    <name>EditorFoot</name>
    <message>
        <source>&amp;Correct</source>
        <translation>更正(&amp;C)</translation>
    </message>
    <message>
        <source>What was done</source>
        <translation>已执行的操作</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
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
    <name>LoginFields</name>
    <message>
        <source>Address of the service</source>
        <translation>服务地址</translation>
    </message>
    <message>
        <source>Where the DICOMweb service of your site is</source>
        <translation>贵单位 DICOMweb 服务的地址</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>Your name at the service; empty to sign in by an access token</source>
        <translation>您在服务中的用户名；使用访问令牌登录时留空</translation>
    </message>
    <message>
        <source>empty for an access token</source>
        <translation>使用访问令牌时留空</translation>
    </message>
    <message>
        <source>&amp;Remember the password</source>
        <translation>记住密码(&amp;R)</translation>
    </message>
    <message>
        <source>Keep it in the secret store of the desktop</source>
        <translation>将其保存在桌面的密码存储中</translation>
    </message>
    <message>
        <source>Allow an &amp;unencrypted connection</source>
        <translation>允许未加密的连接(&amp;U)</translation>
    </message>
    <message>
        <source>Send the password although the address is http://</source>
        <translation>即使地址以 http:// 开头也发送密码</translation>
    </message>
    <message>
        <source>Whoever is on the way to this address can read the password and the images.</source>
        <translation>通往此地址的途中，任何人都可能读取密码和图像。</translation>
    </message>
    <message>
        <source>&amp;Service:</source>
        <translation>服务(&amp;S):</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>用户(&amp;U):</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>密码(&amp;P):</translation>
    </message>
    <message>
        <source>&amp;Cloud user</source>
        <translation>云端用户(&amp;C)</translation>
    </message>
    <message>
        <source>Sign in to a service</source>
        <translation>登录到服务</translation>
    </message>
    <message>
        <source>&amp;Local user</source>
        <translation>本地用户(&amp;L)</translation>
    </message>
    <message>
        <source>Work without the cloud</source>
        <translation>不使用云端</translation>
    </message>
    <message>
        <source>Work with the images on this computer. Nothing is sent to the cloud or fetched from it, until you sign in.</source>
        <translation>使用本机上的图像。在您登录之前，不会向云端发送或从云端获取任何内容。</translation>
    </message>
</context>
<context>
    <name>LoginForm</name>
    <message>
        <source>Sign In</source>
        <translation>登录</translation>
    </message>
    <message>
        <source>The service is being asked</source>
        <translation>正在询问服务</translation>
    </message>
    <message>
        <source>Patient data in the cloud and on this computer</source>
        <translation>云端和本机上的患者数据</translation>
    </message>
    <message>
        <source>Go on as this user</source>
        <translation>以此用户继续</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Stop asking the service, or close this window</source>
        <translation>停止询问服务，或关闭此窗口</translation>
    </message>
    <message>
        <source>The address must begin with https:// or http:// and name a host, without a user or a password.</source>
        <translation>地址必须以 https:// 或 http:// 开头并指明主机，且不含用户名或密码。</translation>
    </message>
    <message>
        <source>This file cannot be written: %1</source>
        <translation>无法写入此文件：%1</translation>
    </message>
    <message>
        <source>You are signed in, but this file cannot be written: %1</source>
        <translation>您已登录，但无法写入此文件：%1</translation>
    </message>
    <message>
        <source>Signed in. The password goes to the secret store of the desktop…</source>
        <translation>已登录。正在将密码保存到桌面的密码存储…</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Work Locally</source>
        <translation>本地工作</translation>
    </message>
</context>
<context>
    <name>LoginSecrets</name>
    <message>
        <source>You are signed in, but the password is not remembered.</source>
        <translation>您已登录，但密码未被记住。</translation>
    </message>
    <message>
        <source>You are signed in, but the password that was remembered earlier is still kept.</source>
        <translation>您已登录，但此前记住的密码仍然保留。</translation>
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
    <name>PasswordField</name>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Your password at the service, or an access token</source>
        <translation>您在服务中的密码，或访问令牌</translation>
    </message>
    <message>
        <source>S&amp;how</source>
        <translation>显示(&amp;H)</translation>
    </message>
    <message>
        <source>Show the password that is typed</source>
        <translation>显示输入的密码</translation>
    </message>
</context>
<context>
    <name>PatientEditor</name>
    <message>
        <source>Correct Patient Data</source>
        <translation>更正患者信息</translation>
    </message>
    <message>
        <source>Reading…</source>
        <translation>正在读取…</translation>
    </message>
    <message>
        <source>You are not signed in to the service, so only the index can be corrected.</source>
        <translation>您尚未登录服务，因此只能更正索引。</translation>
    </message>
    <message>
        <source>The service cannot be asked, so only the index can be corrected. %1</source>
        <translation>无法询问服务，因此只能更正索引。%1</translation>
    </message>
    <message numerus="yes">
        <source>The service has %Ln image(s) of this study.</source>
        <translation>
            <numerusform>服务中有此检查的 %Ln 幅图像。</numerusform>
        </translation>
    </message>
    <message>
        <source>The service does not have this study, so only the index can be corrected.</source>
        <translation>服务中没有此检查，因此只能更正索引。</translation>
    </message>
    <message>
        <source>What you have typed is not saved. Close all the same?</source>
        <translation>您输入的内容尚未保存。仍要关闭吗？</translation>
    </message>
</context>
<context>
    <name>PatientFields</name>
    <message>
        <source>Shown as %1</source>
        <translation>显示为 %1</translation>
    </message>
    <message>
        <source>In the index</source>
        <translation>索引中</translation>
    </message>
    <message>
        <source>In the service</source>
        <translation>服务中</translation>
    </message>
    <message>
        <source>Correct to</source>
        <translation>更正为</translation>
    </message>
    <message>
        <source>Family^Given</source>
        <translation>姓^名</translation>
    </message>
    <message>
        <source>YYYY-MM-DD</source>
        <translation>YYYY-MM-DD</translation>
    </message>
    <message>
        <source>The index and the service differ here</source>
        <translation>此处索引与服务不一致</translation>
    </message>
    <message>
        <source>The name is too long: DICOM has room for %1 characters in each of three groups.</source>
        <translation>姓名过长：DICOM 规定三组中每组最多 %1 个字符。</translation>
    </message>
    <message>
        <source>The patient ID is too long: DICOM has room for %1 characters.</source>
        <translation>患者编号过长：DICOM 规定最多 %1 个字符。</translation>
    </message>
    <message>
        <source>A name and an ID cannot hold a backslash.</source>
        <translation>姓名和编号不能含有反斜杠。</translation>
    </message>
    <message>
        <source>The birth date must be a day of the past, as %1.</source>
        <translation>出生日期必须是过去的日期，格式如 %1。</translation>
    </message>
    <message>
        <source>The comments are too long.</source>
        <translation>备注过长。</translation>
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
    <name>RecordPicker</name>
    <message>
        <source>Find patients by name or ID</source>
        <translation>按姓名或编号查找患者</translation>
    </message>
    <message>
        <source>Patients and studies</source>
        <translation>患者和检查</translation>
    </message>
    <message>
        <source>Patient, study</source>
        <translation>患者、检查</translation>
    </message>
    <message>
        <source>ID, date</source>
        <translation>编号、日期</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>No index is open.</source>
        <translation>未打开索引。</translation>
    </message>
    <message numerus="yes">
        <source>Only %n patient(s) are listed. Type a name or an ID to find others.</source>
        <translation>
            <numerusform>仅列出 %n 位患者。输入姓名或编号可查找其他患者。</numerusform>
        </translation>
    </message>
    <message>
        <source>The index has no patients yet. Import images first.</source>
        <translation>索引中还没有患者。请先导入图像。</translation>
    </message>
    <message>
        <source>No patient&apos;s name or ID has “%1” in it.</source>
        <translation>没有姓名或编号中含有“%1”的患者。</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>（无姓名）</translation>
    </message>
    <message>
        <source>Nothing is ticked yet.</source>
        <translation>尚未勾选任何内容。</translation>
    </message>
    <message numerus="yes">
        <source>%n study(ies) are ticked.</source>
        <translation>
            <numerusform>已勾选 %n 个检查。</numerusform>
        </translation>
    </message>
    <message>
        <source>Reading…</source>
        <translation>正在读取…</translation>
    </message>
</context>
<context>
    <name>RetryNotice</name>
    <message>
        <source>Tr&amp;y Now</source>
        <translation>立即重试(&amp;Y)</translation>
    </message>
    <message>
        <source>Try now</source>
        <translation>立即重试</translation>
    </message>
    <message>
        <source>Ask the service at once, without waiting for the time that is shown</source>
        <translation>立即询问服务，不等到所示的时间</translation>
    </message>
    <message>
        <source>%1. Next try in %2.</source>
        <comment>why a service is left alone</comment>
        <translation>%1。%2 后重试。</translation>
    </message>
    <message>
        <source>%1. Trying again now…</source>
        <comment>why a service is left alone</comment>
        <translation>%1。正在重试……</translation>
    </message>
</context>
<context>
    <name>SecretStore</name>
    <message>
        <source>The secret store does not have this password.</source>
        <translation>密码存储中没有此密码。</translation>
    </message>
    <message>
        <source>Passwords cannot be remembered: no desktop session with a secret store runs here.</source>
        <translation>无法记住密码：此处没有运行带密码存储的桌面会话。</translation>
    </message>
    <message>
        <source>Passwords cannot be remembered: this desktop has no secret store.</source>
        <translation>无法记住密码：此桌面没有密码存储。</translation>
    </message>
    <message>
        <source>The secret store of the desktop is locked.</source>
        <translation>桌面的密码存储已锁定。</translation>
    </message>
    <message>
        <source>The secret store of the desktop refused.</source>
        <translation>桌面的密码存储已拒绝。</translation>
    </message>
    <message>
        <source>The secret store of the desktop does not answer.</source>
        <translation>桌面的密码存储没有应答。</translation>
    </message>
    <message>
        <source>The secret store of the desktop failed</source>
        <translation>桌面的密码存储出错</translation>
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
    <name>WebFailureText</name>
    <message>
        <source>%1 (%2)</source>
        <comment>what a service answered (its number)</comment>
        <translation>%1（%2）</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>已停止</translation>
    </message>
    <message>
        <source>The service cannot be reached</source>
        <translation>无法连接服务</translation>
    </message>
    <message>
        <source>The service did not answer in time</source>
        <translation>服务未及时应答</translation>
    </message>
    <message>
        <source>The connection was lost on the way</source>
        <translation>连接中途断开</translation>
    </message>
    <message>
        <source>The certificate of the service is not to be trusted</source>
        <translation>服务的证书不可信</translation>
    </message>
    <message>
        <source>The password would travel unencrypted: the address must begin with https://, or plain connections must be allowed</source>
        <translation>密码将以未加密方式传输：地址必须以 https:// 开头，或须允许未加密的连接</translation>
    </message>
    <message>
        <source>Wrong user or password, or the sign-in has ended</source>
        <translation>用户或密码错误，或登录已失效</translation>
    </message>
    <message>
        <source>This user is not allowed to do that</source>
        <translation>此用户无权执行此操作</translation>
    </message>
    <message>
        <source>The service does not have it</source>
        <translation>服务中没有此内容</translation>
    </message>
    <message>
        <source>The service has an object that is in conflict with this one</source>
        <translation>服务中有与此对象冲突的对象</translation>
    </message>
    <message>
        <source>Something answers at this address, but it is not a DICOMweb service</source>
        <translation>此地址有应答，但不是 DICOMweb 服务</translation>
    </message>
    <message>
        <source>The service refused it</source>
        <translation>服务已拒绝</translation>
    </message>
    <message>
        <source>The service failed</source>
        <translation>服务出错</translation>
    </message>
    <message>
        <source>The answer of the service cannot be understood</source>
        <translation>无法理解服务的应答</translation>
    </message>
    <message>
        <source>The file cannot be read</source>
        <translation>无法读取文件</translation>
    </message>
    <message>
        <source>The disk is full</source>
        <translation>磁盘已满</translation>
    </message>
    <message>
        <source>There is no remembered password to sign in with</source>
        <translation>没有已记住的密码可用于登录</translation>
    </message>
    <message>
        <source>The service gave fewer images than it has</source>
        <translation>服务提供的图像少于其所有的图像</translation>
    </message>
    <message>
        <source>The service is busy</source>
        <translation>服务繁忙</translation>
    </message>
    <message>
        <source>No secure connection: what answers at this address and port is not a TLS service, or speaks another kind of TLS</source>
        <translation>无法建立安全连接：该地址和端口上应答的不是 TLS 服务，或使用了不兼容的 TLS</translation>
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
