<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Localizable</name>
    <message>
        <source>untitled script</source>
        <translation>Skript ohne Titel</translation>
    </message>
    <message>
        <source>The extension “%@” is not compatible with your computer’s CPU architecture. Please contact this extension’s developer directly for assistance.</source>
        <extracomment>The message of an alert, %@ is the name of a plug-in.</extracomment>
        <translation>Die Erweiterung „%@“ ist nicht mit der CPU-Architektur Ihres Computers kompatibel. Bitte wenden Sie sich direkt an den Entwickler dieser Erweiterung, um Hilfe zu erhalten.</translation>
    </message>
    <message>
        <source>Unsupported plug-in</source>
        <translation>Nicht unterstütztes Plug-in</translation>
    </message>
    <message>
        <source>untitled</source>
        <translation>Ohne Titel</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; has failed</source>
        <translation>Die Übertragung von „%1“ ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; was cancelled</source>
        <translation>Die Übertragung von „%1“ wurde abgebrochen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid URL</source>
        <translation>„%1“ ist keine gültige URL</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has not answered in time</source>
        <translation>Der Server „%1“ hat nicht rechtzeitig geantwortet</translation>
    </message>
    <message>
        <source>The URL of &quot;%1&quot; is neither http nor https</source>
        <translation>Die URL von „%1“ ist weder http noch https</translation>
    </message>
    <message>
        <source>A server named &quot;%1&quot; cannot be found</source>
        <translation>Ein Server mit dem Namen „%1“ wurde nicht gefunden</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; cannot be reached</source>
        <translation>Der Server „%1“ ist nicht erreichbar</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; was lost</source>
        <translation>Die Verbindung zu „%1“ wurde unterbrochen</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; redirects too many times</source>
        <translation>Der Server „%1“ leitet zu oft weiter</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has sent an answer that is not HTTP</source>
        <translation>Der Server „%1“ hat eine Antwort gesendet, die nicht HTTP entspricht</translation>
    </message>
    <message>
        <source>What the server &quot;%1&quot; has sent cannot be decoded</source>
        <translation>Die vom Server „%1“ gesendeten Daten können nicht dekodiert werden</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; would not be encrypted, which is not allowed</source>
        <translation>Die Verbindung zu „%1“ wäre nicht verschlüsselt und ist daher nicht erlaubt</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; sends more than is allowed</source>
        <translation>Der Server „%1“ sendet mehr Daten als erlaubt</translation>
    </message>
    <message>
        <source>A secure connection to &quot;%1&quot; cannot be made</source>
        <translation>Es kann keine sichere Verbindung zu „%1“ hergestellt werden</translation>
    </message>
    <message>
        <source>The certificate of the server &quot;%1&quot; is not trusted</source>
        <translation>Das Zertifikat des Servers „%1“ ist nicht vertrauenswürdig</translation>
    </message>
    <message>
        <source>No file can be created for the download from &quot;%1&quot;</source>
        <translation>Für den Download von „%1“ kann keine Datei angelegt werden</translation>
    </message>
    <message>
        <source>The download from &quot;%1&quot; cannot be written to its file</source>
        <translation>Der Download von „%1“ kann nicht in die Datei geschrieben werden</translation>
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
        <translation>Die ZIP-Datei konnte nicht entpackt werden.</translation>
    </message>
    <message>
        <source>Could not create file handle for writing decompressed data to.</source>
        <translation>Die Datei für die entpackten Daten konnte nicht zum Schreiben geöffnet werden.</translation>
    </message>
    <message>
        <source>Could not create file to decompress to.</source>
        <translation>Die Zieldatei für das Entpacken konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Invalid file path within zip archive.</source>
        <translation>Ungültiger Dateipfad im ZIP-Archiv.</translation>
    </message>
    <message>
        <source>Can not confirm that the created intermediate folders are sub folders of the destination folder.</source>
        <translation>Es konnte nicht bestätigt werden, dass die angelegten Zwischenordner Unterordner des Zielordners sind.</translation>
    </message>
    <message>
        <source>Could not create intermediate subfolders when decompressing plugin archive.</source>
        <translation>Beim Entpacken des Plug-in-Archivs konnten keine Zwischenordner angelegt werden.</translation>
    </message>
    <message>
        <source>Failure to install plugin.</source>
        <translation>Das Plug-in konnte nicht installiert werden.</translation>
    </message>
    <message>
        <source>Plugin update already downloaded.</source>
        <translation>Das Plug-in-Update wurde bereits geladen.</translation>
    </message>
    <message>
        <source>Could not obtain url to download plugin update.</source>
        <translation>Die URL zum Laden des Plug-in-Updates konnte nicht ermittelt werden.</translation>
    </message>
    <message>
        <source>The plugin&apos;s identifier and version do not name a folder inside the plugins warehouse.</source>
        <extracomment>The plugins warehouse is a folder of the application, where downloaded updates wait for their installation.</extracomment>
        <translation>Kennung und Version des Plug-ins bezeichnen keinen Ordner innerhalb des Plug-in-Lagers.</translation>
    </message>
    <message>
        <source>The update feed “%1” is larger than %2 MB.</source>
        <translation>Der Update-Feed „%1“ ist größer als %2&#xa0;MB.</translation>
    </message>
    <message>
        <source>The update feed “%1” is not valid JSON.</source>
        <translation>Der Update-Feed „%1“ enthält kein gültiges JSON.</translation>
    </message>
    <message>
        <source>The update feed “%1” has neither a version with a download URL nor a list of items.</source>
        <translation>Der Update-Feed „%1“ enthält weder eine Version mit Download-URL noch eine Liste von Einträgen.</translation>
    </message>
    <message>
        <source>The update feed “%1” offers no version that can be downloaded.</source>
        <translation>Der Update-Feed „%1“ bietet keine Version an, die geladen werden kann.</translation>
    </message>
</context>
</TS>
