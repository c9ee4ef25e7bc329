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
</context>
</TS>
