<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Localizable</name>
    <message>
        <source>untitled script</source>
        <translation>未命名脚本</translation>
    </message>
    <message>
        <source>The extension “%@” is not compatible with your computer’s CPU architecture. Please contact this extension’s developer directly for assistance.</source>
        <extracomment>The message of an alert, %@ is the name of a plug-in.</extracomment>
        <translation>扩展“%@”与您电脑的 CPU 架构不兼容。请直接联系此扩展的开发者以获取帮助。</translation>
    </message>
    <message>
        <source>Unsupported plug-in</source>
        <translation>不支持的插件</translation>
    </message>
    <message>
        <source>untitled</source>
        <translation>未命名</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; has failed</source>
        <translation>从“%1”传输失败</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; was cancelled</source>
        <translation>从“%1”的传输已取消</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid URL</source>
        <translation>“%1”不是有效的 URL</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has not answered in time</source>
        <translation>服务器“%1”未及时响应</translation>
    </message>
    <message>
        <source>The URL of &quot;%1&quot; is neither http nor https</source>
        <translation>“%1”的 URL 既不是 http 也不是 https</translation>
    </message>
    <message>
        <source>A server named &quot;%1&quot; cannot be found</source>
        <translation>找不到名为“%1”的服务器</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; cannot be reached</source>
        <translation>无法连接到服务器“%1”</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; was lost</source>
        <translation>与“%1”的连接已中断</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; redirects too many times</source>
        <translation>服务器“%1”重定向次数过多</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has sent an answer that is not HTTP</source>
        <translation>服务器“%1”发送的响应不是 HTTP</translation>
    </message>
    <message>
        <source>What the server &quot;%1&quot; has sent cannot be decoded</source>
        <translation>无法解码服务器“%1”发送的数据</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; would not be encrypted, which is not allowed</source>
        <translation>与“%1”的连接不会加密，因此不被允许</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; sends more than is allowed</source>
        <translation>服务器“%1”发送的数据超出允许的大小</translation>
    </message>
    <message>
        <source>A secure connection to &quot;%1&quot; cannot be made</source>
        <translation>无法与“%1”建立安全连接</translation>
    </message>
    <message>
        <source>The certificate of the server &quot;%1&quot; is not trusted</source>
        <translation>服务器“%1”的证书不受信任</translation>
    </message>
    <message>
        <source>No file can be created for the download from &quot;%1&quot;</source>
        <translation>无法为从“%1”下载的内容创建文件</translation>
    </message>
    <message>
        <source>The download from &quot;%1&quot; cannot be written to its file</source>
        <translation>无法将从“%1”下载的内容写入文件</translation>
    </message>
    <message>
        <source>%1.</source>
        <extracomment>Ends a sentence of this table that has no full stop (%1).</extracomment>
        <translation>%1。</translation>
    </message>
    <message>
        <source>%1: %2.</source>
        <extracomment>A sentence of this table that has no full stop (%1), and what exactly has happened (%2).</extracomment>
        <translation>%1：%2。</translation>
    </message>
    <message>
        <source>Decompressing zip file failed.</source>
        <translation>解压缩 ZIP 文件失败。</translation>
    </message>
    <message>
        <source>Could not create file handle for writing decompressed data to.</source>
        <translation>无法打开用于写入解压缩数据的文件。</translation>
    </message>
    <message>
        <source>Could not create file to decompress to.</source>
        <translation>无法创建解压缩的目标文件。</translation>
    </message>
    <message>
        <source>Invalid file path within zip archive.</source>
        <translation>ZIP 归档中的文件路径无效。</translation>
    </message>
    <message>
        <source>Can not confirm that the created intermediate folders are sub folders of the destination folder.</source>
        <translation>无法确认所创建的中间文件夹是目标文件夹的子文件夹。</translation>
    </message>
    <message>
        <source>Could not create intermediate subfolders when decompressing plugin archive.</source>
        <translation>解压缩插件归档时无法创建中间子文件夹。</translation>
    </message>
    <message>
        <source>Failure to install plugin.</source>
        <translation>安装插件失败。</translation>
    </message>
    <message>
        <source>Plugin update already downloaded.</source>
        <translation>插件更新已下载。</translation>
    </message>
    <message>
        <source>Could not obtain url to download plugin update.</source>
        <translation>无法获取插件更新的下载 URL。</translation>
    </message>
    <message>
        <source>The plugin&apos;s identifier and version do not name a folder inside the plugins warehouse.</source>
        <extracomment>The plugins warehouse is a folder of the application, where downloaded updates wait for their installation.</extracomment>
        <translation>插件的标识符和版本未指向插件仓库内的文件夹。</translation>
    </message>
    <message>
        <source>The update feed “%1” is larger than %2 MB.</source>
        <translation>更新源“%1”大于 %2&#xa0;MB。</translation>
    </message>
    <message>
        <source>The update feed “%1” is not valid JSON.</source>
        <translation>更新源“%1”不是有效的 JSON。</translation>
    </message>
    <message>
        <source>The update feed “%1” has neither a version with a download URL nor a list of items.</source>
        <translation>更新源“%1”既不包含带有下载 URL 的版本，也不包含项目列表。</translation>
    </message>
    <message>
        <source>The update feed “%1” offers no version that can be downloaded.</source>
        <translation>更新源“%1”未提供可下载的版本。</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>应用程序</translation>
    </message>
    <message>
        <source>Log entries</source>
        <translation>日志条目</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>控制台</translation>
    </message>
    <message>
        <source>Show entries of</source>
        <translation>显示以下来源的条目</translation>
    </message>
    <message>
        <source>All plug-ins</source>
        <translation>所有插件</translation>
    </message>
    <message>
        <source>Lowest level</source>
        <translation>最低级别</translation>
    </message>
    <message>
        <source>All levels</source>
        <translation>所有级别</translation>
    </message>
    <message>
        <source>Warnings and errors</source>
        <translation>警告和错误</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Search entries</source>
        <translation>搜索条目</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>拷贝</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清除</translation>
    </message>
    <message>
        <source>Selected entry</source>
        <translation>所选条目</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>Of entries in a list that is filtered.</extracomment>
        <translation>%1/%2</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>消息</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Stop “%1”</source>
        <translation>停止“%1”</translation>
    </message>
    <message>
        <source>Running commands</source>
        <translation>正在运行的命令</translation>
    </message>
    <message>
        <source>No commands are running</source>
        <translation>没有正在运行的命令</translation>
    </message>
    <message>
        <source>Running commands: %1</source>
        <translation>正在运行的命令：%1</translation>
    </message>
    <message>
        <source>A script has been running for a long time.</source>
        <translation>某个脚本已运行很长时间。</translation>
    </message>
    <message>
        <source>“%1” has computed for %2 seconds. Meanwhile the application cannot do anything else.</source>
        <translation>“%1”已运算 %2 秒。在此期间，应用程序无法执行其他操作。</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>停止(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Keep Waiting</source>
        <translation>继续等待(&amp;K)</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>命令</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>版本 %1</translation>
    </message>
    <message>
        <source>For versions %1 to %2 of this application</source>
        <translation>适用于此应用程序的 %1 至 %2 版</translation>
    </message>
    <message>
        <source>For version %1 of this application and later</source>
        <translation>适用于此应用程序的 %1 版及更高版本</translation>
    </message>
    <message>
        <source>Open &amp;Homepage</source>
        <translation>打开主页(&amp;H)</translation>
    </message>
    <message>
        <source>Select a plug-in to see what it does.</source>
        <translation>选择插件以查看其功能。</translation>
    </message>
    <message>
        <source>This version is known not to work with this application.</source>
        <translation>已知此版本无法在此应用程序中正常工作。</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation>在文件夹中显示(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Remove…</source>
        <translation>移除(&amp;R)…</translation>
    </message>
    <message>
        <source>“%1” is installed already.</source>
        <translation>“%1”已安装。</translation>
    </message>
    <message>
        <source>There is no plug-in in “%1”.</source>
        <translation>“%1”中没有插件。</translation>
    </message>
    <message>
        <source>The manifest of “%1” is missing or cannot be read.</source>
        <translation>“%1”的清单缺失或无法读取。</translation>
    </message>
    <message>
        <source>The manifest of “%1” names no identifier.</source>
        <translation>“%1”的清单未指明标识符。</translation>
    </message>
    <message>
        <source>Incompatible</source>
        <translation>不兼容</translation>
    </message>
    <message>
        <source>Update available</source>
        <translation>有可用更新</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>正在更新</translation>
    </message>
    <message>
        <source>Update failed</source>
        <translation>更新失败</translation>
    </message>
    <message>
        <source>Running</source>
        <extracomment>A badge of a plug-in one of whose commands goes on.</extracomment>
        <translation>正在运行</translation>
    </message>
    <message>
        <source>enabled</source>
        <translation>已启用</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>已停用</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is newer.</source>
        <translation>已安装版本 %1。文件中包含较新的版本 %2。</translation>
    </message>
    <message>
        <source>The file holds the version that is installed: %1.</source>
        <translation>文件中包含的版本与已安装的版本相同：%1。</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is older.</source>
        <translation>已安装版本 %1。文件中包含较旧的版本 %2。</translation>
    </message>
    <message>
        <source>Remove “%1”?</source>
        <translation>要移除“%1”吗？</translation>
    </message>
    <message>
        <source>Its commands are stopped, and its folder is moved to the trash.</source>
        <translation>其命令将被停止，其文件夹将移到废纸篓。</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>移除(&amp;R)</translation>
    </message>
    <message>
        <source>Replace “%1”?</source>
        <translation>要替换“%1”吗？</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>替换(&amp;R)</translation>
    </message>
    <message>
        <source>Check for U&amp;pdates</source>
        <translation>检查更新(&amp;P)</translation>
    </message>
    <message>
        <source>Update &amp;All</source>
        <translation>全部更新(&amp;A)</translation>
    </message>
    <message>
        <source>Cancel A&amp;ll</source>
        <translation>全部取消(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Disable all plug-ins</source>
        <translation>停用所有插件(&amp;D)</translation>
    </message>
    <message>
        <source>Plug-ins</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>Search plug-ins</source>
        <translation>搜索插件</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>安装(&amp;I)</translation>
    </message>
    <message>
        <source>From an &amp;Archive…</source>
        <translation>从归档(&amp;A)…</translation>
    </message>
    <message>
        <source>From a &amp;Folder…</source>
        <translation>从文件夹(&amp;F)…</translation>
    </message>
    <message>
        <source>Installed plug-ins</source>
        <translation>已安装的插件</translation>
    </message>
    <message>
        <source>Install Plug-ins</source>
        <translation>安装插件</translation>
    </message>
    <message>
        <source>Archives of plug-ins (*.zip)</source>
        <translation>插件归档 (*.zip)</translation>
    </message>
    <message>
        <source>Plug-ins that were disabled because they do not work with this application: %1</source>
        <translation>因无法在此应用程序中工作而停用的插件：%1</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>正在查找更新…</translation>
    </message>
    <message>
        <source>Plug-ins: %1  ·  Updates: %2</source>
        <translation>插件：%1  ·  更新：%2</translation>
    </message>
    <message>
        <source>All plug-ins are disabled. Enabling one of them leaves the others disabled for good.</source>
        <translation>所有插件均已停用。启用其中一个后，其他插件将一直保持停用状态。</translation>
    </message>
    <message>
        <source>“%1” is installed, in version %2.</source>
        <translation>“%1”的版本 %2 已安装。</translation>
    </message>
    <message>
        <source>No editor for plug-ins could be started. The plug-in’s folder is shown instead.</source>
        <translation>无法启动插件编辑器。将改为显示插件的文件夹。</translation>
    </message>
    <message>
        <source>“%1” cannot be moved to the trash: %2</source>
        <translation>无法将“%1”移到废纸篓：%2</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>正在下载…</translation>
    </message>
    <message>
        <source>Looking for an update…</source>
        <translation>正在查找更新…</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>版本 %1 可用。</translation>
    </message>
    <message>
        <source>Waits for other downloads.</source>
        <translation>正在等待其他下载。</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>正在安装…</translation>
    </message>
    <message>
        <source>Updated to version %1.</source>
        <translation>已更新到版本 %1。</translation>
    </message>
    <message>
        <source>&amp;Update</source>
        <translation>更新(&amp;U)</translation>
    </message>
    <message>
        <source>Progress of the download</source>
        <translation>下载进度</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>重试(&amp;T)</translation>
    </message>
    <message>
        <source>The update is not offered any more.</source>
        <translation>该更新已不再提供。</translation>
    </message>
    <message>
        <source>The archive of the update is empty or cannot be read.</source>
        <translation>更新的归档为空或无法读取。</translation>
    </message>
    <message>
        <source>“%1” cannot be copied: %2</source>
        <translation>无法拷贝“%1”：%2</translation>
    </message>
    <message>
        <source>“%1” is no archive, is empty or cannot be read.</source>
        <translation>“%1”不是归档、为空或无法读取。</translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation>没有文件“%1”。</translation>
    </message>
    <message>
        <source>“%1” is neither a plug-in nor a zip archive of one.</source>
        <translation>“%1”既不是插件，也不是插件的 ZIP 归档。</translation>
    </message>
    <message>
        <source>“%1” holds a link that leads out of it.</source>
        <translation>“%1”包含指向其外部的链接。</translation>
    </message>
    <message>
        <source>Enable A&amp;gain</source>
        <translation>重新启用(&amp;G)</translation>
    </message>
    <message>
        <source>%1 downloaded</source>
        <extracomment>%1 is what has arrived, with its unit.</extracomment>
        <translation>已下载 %1</translation>
    </message>
    <message>
        <source>%1 of %2 downloaded</source>
        <extracomment>%1 is what has arrived, %2 the whole; both with their unit.</extracomment>
        <translation>已下载 %1（共 %2）</translation>
    </message>
    <message>
        <source>%1, %2 per second</source>
        <extracomment>%1 says what has arrived, %2 what arrives in a second, with its unit.</extracomment>
        <translation>%1，每秒 %2</translation>
    </message>
</context>
</TS>
