<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>Localizable</name>
    <message>
        <source>untitled script</source>
        <translation>untitled script</translation>
    </message>
    <message>
        <source>The extension “%@” is not compatible with your computer’s CPU architecture. Please contact this extension’s developer directly for assistance.</source>
        <extracomment>The message of an alert, %@ is the name of a plug-in.</extracomment>
        <translation>The extension “%@” is not compatible with your computer’s CPU architecture. Please contact this extension’s developer directly for assistance.</translation>
    </message>
    <message>
        <source>Unsupported plug-in</source>
        <translation>Unsupported plug-in</translation>
    </message>
    <message>
        <source>untitled</source>
        <translation>untitled</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; has failed</source>
        <translation>The transfer from &quot;%1&quot; has failed</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; was cancelled</source>
        <translation>The transfer from &quot;%1&quot; was cancelled</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid URL</source>
        <translation>&quot;%1&quot; is not a valid URL</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has not answered in time</source>
        <translation>The server &quot;%1&quot; has not answered in time</translation>
    </message>
    <message>
        <source>The URL of &quot;%1&quot; is neither http nor https</source>
        <translation>The URL of &quot;%1&quot; is neither http nor https</translation>
    </message>
    <message>
        <source>A server named &quot;%1&quot; cannot be found</source>
        <translation>A server named &quot;%1&quot; cannot be found</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; cannot be reached</source>
        <translation>The server &quot;%1&quot; cannot be reached</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; was lost</source>
        <translation>The connection to &quot;%1&quot; was lost</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; redirects too many times</source>
        <translation>The server &quot;%1&quot; redirects too many times</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has sent an answer that is not HTTP</source>
        <translation>The server &quot;%1&quot; has sent an answer that is not HTTP</translation>
    </message>
    <message>
        <source>What the server &quot;%1&quot; has sent cannot be decoded</source>
        <translation>What the server &quot;%1&quot; has sent cannot be decoded</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; would not be encrypted, which is not allowed</source>
        <translation>The connection to &quot;%1&quot; would not be encrypted, which is not allowed</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; sends more than is allowed</source>
        <translation>The server &quot;%1&quot; sends more than is allowed</translation>
    </message>
    <message>
        <source>A secure connection to &quot;%1&quot; cannot be made</source>
        <translation>A secure connection to &quot;%1&quot; cannot be made</translation>
    </message>
    <message>
        <source>The certificate of the server &quot;%1&quot; is not trusted</source>
        <translation>The certificate of the server &quot;%1&quot; is not trusted</translation>
    </message>
    <message>
        <source>No file can be created for the download from &quot;%1&quot;</source>
        <translation>No file can be created for the download from &quot;%1&quot;</translation>
    </message>
    <message>
        <source>The download from &quot;%1&quot; cannot be written to its file</source>
        <translation>The download from &quot;%1&quot; cannot be written to its file</translation>
    </message>
    <message>
        <source>%1.</source>
        <extracomment>Ends a sentence of this table that has no full stop (%1).</extracomment>
        <translation>%1.</translation>
    </message>
    <message>
        <source>%1: %2.</source>
        <extracomment>A sentence of this table that has no full stop (%1), and what exactly has happened (%2).</extracomment>
        <translation>%1: %2.</translation>
    </message>
    <message>
        <source>Decompressing zip file failed.</source>
        <translation>Decompressing zip file failed.</translation>
    </message>
    <message>
        <source>Could not create file handle for writing decompressed data to.</source>
        <translation>Could not create file handle for writing decompressed data to.</translation>
    </message>
    <message>
        <source>Could not create file to decompress to.</source>
        <translation>Could not create file to decompress to.</translation>
    </message>
    <message>
        <source>Invalid file path within zip archive.</source>
        <translation>Invalid file path within zip archive.</translation>
    </message>
    <message>
        <source>Can not confirm that the created intermediate folders are sub folders of the destination folder.</source>
        <translation>Can not confirm that the created intermediate folders are sub folders of the destination folder.</translation>
    </message>
    <message>
        <source>Could not create intermediate subfolders when decompressing plugin archive.</source>
        <translation>Could not create intermediate subfolders when decompressing plugin archive.</translation>
    </message>
    <message>
        <source>Failure to install plugin.</source>
        <translation>Failure to install plugin.</translation>
    </message>
    <message>
        <source>Plugin update already downloaded.</source>
        <translation>Plugin update already downloaded.</translation>
    </message>
    <message>
        <source>Could not obtain url to download plugin update.</source>
        <translation>Could not obtain url to download plugin update.</translation>
    </message>
    <message>
        <source>The plugin&apos;s identifier and version do not name a folder inside the plugins warehouse.</source>
        <extracomment>The plugins warehouse is a folder of the application, where downloaded updates wait for their installation.</extracomment>
        <translation>The plugin&apos;s identifier and version do not name a folder inside the plugins warehouse.</translation>
    </message>
    <message>
        <source>The update feed “%1” is larger than %2 MB.</source>
        <translation>The update feed “%1” is larger than %2 MB.</translation>
    </message>
    <message>
        <source>The update feed “%1” is not valid JSON.</source>
        <translation>The update feed “%1” is not valid JSON.</translation>
    </message>
    <message>
        <source>The update feed “%1” has neither a version with a download URL nor a list of items.</source>
        <translation>The update feed “%1” has neither a version with a download URL nor a list of items.</translation>
    </message>
    <message>
        <source>The update feed “%1” offers no version that can be downloaded.</source>
        <translation>The update feed “%1” offers no version that can be downloaded.</translation>
    </message>
</context>
</TS>
