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
    <message>
        <source>Application</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>Log entries</source>
        <translation>Log entries</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Console</translation>
    </message>
    <message>
        <source>Show entries of</source>
        <translation>Show entries of</translation>
    </message>
    <message>
        <source>All plug-ins</source>
        <translation>All plug-ins</translation>
    </message>
    <message>
        <source>Lowest level</source>
        <translation>Lowest level</translation>
    </message>
    <message>
        <source>All levels</source>
        <translation>All levels</translation>
    </message>
    <message>
        <source>Warnings and errors</source>
        <translation>Warnings and errors</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Errors</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>Search entries</source>
        <translation>Search entries</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Selected entry</source>
        <translation>Selected entry</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>Of entries in a list that is filtered.</extracomment>
        <translation>%1 of %2</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>Plug-in</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Place</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Stop “%1”</source>
        <translation>Stop “%1”</translation>
    </message>
    <message>
        <source>Running commands</source>
        <translation>Running commands</translation>
    </message>
    <message>
        <source>No commands are running</source>
        <translation>No commands are running</translation>
    </message>
    <message>
        <source>Running commands: %1</source>
        <translation>Running commands: %1</translation>
    </message>
    <message>
        <source>A script has been running for a long time.</source>
        <translation>A script has been running for a long time.</translation>
    </message>
    <message>
        <source>“%1” has computed for %2 seconds. Meanwhile the application cannot do anything else.</source>
        <translation>“%1” has computed for %2 seconds. Meanwhile the application cannot do anything else.</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Stop</translation>
    </message>
    <message>
        <source>&amp;Keep Waiting</source>
        <translation>&amp;Keep Waiting</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Dismiss</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Commands</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Command</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Shortcut</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>For versions %1 to %2 of this application</source>
        <translation>For versions %1 to %2 of this application</translation>
    </message>
    <message>
        <source>For version %1 of this application and later</source>
        <translation>For version %1 of this application and later</translation>
    </message>
    <message>
        <source>Open &amp;Homepage</source>
        <translation>Open &amp;Homepage</translation>
    </message>
    <message>
        <source>Select a plug-in to see what it does.</source>
        <translation>Select a plug-in to see what it does.</translation>
    </message>
    <message>
        <source>This version is known not to work with this application.</source>
        <translation>This version is known not to work with this application.</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Edit</translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation>&amp;Show in Folder</translation>
    </message>
    <message>
        <source>&amp;Remove…</source>
        <translation>&amp;Remove…</translation>
    </message>
    <message>
        <source>“%1” is installed already.</source>
        <translation>“%1” is installed already.</translation>
    </message>
    <message>
        <source>There is no plug-in in “%1”.</source>
        <translation>There is no plug-in in “%1”.</translation>
    </message>
    <message>
        <source>The manifest of “%1” is missing or cannot be read.</source>
        <translation>The manifest of “%1” is missing or cannot be read.</translation>
    </message>
    <message>
        <source>The manifest of “%1” names no identifier.</source>
        <translation>The manifest of “%1” names no identifier.</translation>
    </message>
    <message>
        <source>Incompatible</source>
        <translation>Incompatible</translation>
    </message>
    <message>
        <source>Update available</source>
        <translation>Update available</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>Updating</translation>
    </message>
    <message>
        <source>Update failed</source>
        <translation>Update failed</translation>
    </message>
    <message>
        <source>Running</source>
        <extracomment>A badge of a plug-in one of whose commands goes on.</extracomment>
        <translation>Running</translation>
    </message>
    <message>
        <source>enabled</source>
        <translation>enabled</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>disabled</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is newer.</source>
        <translation>Version %1 is installed. The file holds version %2, which is newer.</translation>
    </message>
    <message>
        <source>The file holds the version that is installed: %1.</source>
        <translation>The file holds the version that is installed: %1.</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is older.</source>
        <translation>Version %1 is installed. The file holds version %2, which is older.</translation>
    </message>
    <message>
        <source>Remove “%1”?</source>
        <translation>Remove “%1”?</translation>
    </message>
    <message>
        <source>Its commands are stopped, and its folder is moved to the trash.</source>
        <translation>Its commands are stopped, and its folder is moved to the trash.</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Remove</translation>
    </message>
    <message>
        <source>Replace “%1”?</source>
        <translation>Replace “%1”?</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Replace</translation>
    </message>
    <message>
        <source>Check for U&amp;pdates</source>
        <translation>Check for U&amp;pdates</translation>
    </message>
    <message>
        <source>Update &amp;All</source>
        <translation>Update &amp;All</translation>
    </message>
    <message>
        <source>Cancel A&amp;ll</source>
        <translation>Cancel A&amp;ll</translation>
    </message>
    <message>
        <source>&amp;Disable all plug-ins</source>
        <translation>&amp;Disable all plug-ins</translation>
    </message>
    <message>
        <source>Plug-ins</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>Search plug-ins</source>
        <translation>Search plug-ins</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>&amp;Install</translation>
    </message>
    <message>
        <source>From an &amp;Archive…</source>
        <translation>From an &amp;Archive…</translation>
    </message>
    <message>
        <source>From a &amp;Folder…</source>
        <translation>From a &amp;Folder…</translation>
    </message>
    <message>
        <source>Installed plug-ins</source>
        <translation>Installed plug-ins</translation>
    </message>
    <message>
        <source>Install Plug-ins</source>
        <translation>Install Plug-ins</translation>
    </message>
    <message>
        <source>Archives of plug-ins (*.zip)</source>
        <translation>Archives of plug-ins (*.zip)</translation>
    </message>
    <message>
        <source>Plug-ins that were disabled because they do not work with this application: %1</source>
        <translation>Plug-ins that were disabled because they do not work with this application: %1</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>Looking for updates…</translation>
    </message>
    <message>
        <source>Plug-ins: %1  ·  Updates: %2</source>
        <translation>Plug-ins: %1  ·  Updates: %2</translation>
    </message>
    <message>
        <source>All plug-ins are disabled. Enabling one of them leaves the others disabled for good.</source>
        <translation>All plug-ins are disabled. Enabling one of them leaves the others disabled for good.</translation>
    </message>
    <message>
        <source>“%1” is installed, in version %2.</source>
        <translation>“%1” is installed, in version %2.</translation>
    </message>
    <message>
        <source>No editor for plug-ins could be started. The plug-in’s folder is shown instead.</source>
        <translation>No editor for plug-ins could be started. The plug-in’s folder is shown instead.</translation>
    </message>
    <message>
        <source>“%1” cannot be moved to the trash: %2</source>
        <translation>“%1” cannot be moved to the trash: %2</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>Downloading…</translation>
    </message>
    <message>
        <source>Looking for an update…</source>
        <translation>Looking for an update…</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>Version %1 is available.</translation>
    </message>
    <message>
        <source>Waits for other downloads.</source>
        <translation>Waits for other downloads.</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Installing…</translation>
    </message>
    <message>
        <source>Updated to version %1.</source>
        <translation>Updated to version %1.</translation>
    </message>
    <message>
        <source>&amp;Update</source>
        <translation>&amp;Update</translation>
    </message>
    <message>
        <source>Progress of the download</source>
        <translation>Progress of the download</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>&amp;Try Again</translation>
    </message>
    <message>
        <source>The update is not offered any more.</source>
        <translation>The update is not offered any more.</translation>
    </message>
    <message>
        <source>The archive of the update is empty or cannot be read.</source>
        <translation>The archive of the update is empty or cannot be read.</translation>
    </message>
    <message>
        <source>“%1” cannot be copied: %2</source>
        <translation>“%1” cannot be copied: %2</translation>
    </message>
    <message>
        <source>“%1” is no archive, is empty or cannot be read.</source>
        <translation>“%1” is no archive, is empty or cannot be read.</translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation>There is no file “%1”.</translation>
    </message>
    <message>
        <source>“%1” is neither a plug-in nor a zip archive of one.</source>
        <translation>“%1” is neither a plug-in nor a zip archive of one.</translation>
    </message>
    <message>
        <source>“%1” holds a link that leads out of it.</source>
        <translation>“%1” holds a link that leads out of it.</translation>
    </message>
    <message>
        <source>Enable A&amp;gain</source>
        <translation>Enable A&amp;gain</translation>
    </message>
    <message>
        <source>%1 downloaded</source>
        <extracomment>%1 is what has arrived, with its unit.</extracomment>
        <translation>%1 downloaded</translation>
    </message>
    <message>
        <source>%1 of %2 downloaded</source>
        <extracomment>%1 is what has arrived, %2 the whole; both with their unit.</extracomment>
        <translation>%1 of %2 downloaded</translation>
    </message>
    <message>
        <source>%1, %2 per second</source>
        <extracomment>%1 says what has arrived, %2 what arrives in a second, with its unit.</extracomment>
        <translation>%1, %2 per second</translation>
    </message>
</context>
</TS>
