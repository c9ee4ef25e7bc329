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
    <message>
        <source>Application</source>
        <translation>Anwendung</translation>
    </message>
    <message>
        <source>Log entries</source>
        <translation>Protokolleinträge</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Konsole</translation>
    </message>
    <message>
        <source>Show entries of</source>
        <translation>Einträge anzeigen von</translation>
    </message>
    <message>
        <source>All plug-ins</source>
        <translation>Alle Plug-ins</translation>
    </message>
    <message>
        <source>Lowest level</source>
        <translation>Niedrigste Stufe</translation>
    </message>
    <message>
        <source>All levels</source>
        <translation>Alle Stufen</translation>
    </message>
    <message>
        <source>Warnings and errors</source>
        <translation>Warnungen und Fehler</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search entries</source>
        <translation>Einträge durchsuchen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Selected entry</source>
        <translation>Ausgewählter Eintrag</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>Of entries in a list that is filtered.</extracomment>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>Plug-in</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Stop “%1”</source>
        <translation>„%1“ beenden</translation>
    </message>
    <message>
        <source>Running commands</source>
        <translation>Laufende Befehle</translation>
    </message>
    <message>
        <source>No commands are running</source>
        <translation>Es laufen keine Befehle</translation>
    </message>
    <message>
        <source>Running commands: %1</source>
        <translation>Laufende Befehle: %1</translation>
    </message>
    <message>
        <source>A script has been running for a long time.</source>
        <translation>Ein Skript läuft seit längerer Zeit.</translation>
    </message>
    <message>
        <source>“%1” has computed for %2 seconds. Meanwhile the application cannot do anything else.</source>
        <translation>„%1“ rechnet seit %2 Sekunden. Währenddessen kann die Anwendung nichts anderes tun.</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Keep Waiting</source>
        <translation>&amp;Weiter warten</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Kurzbefehl</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>For versions %1 to %2 of this application</source>
        <translation>Für die Versionen %1 bis %2 dieser Anwendung</translation>
    </message>
    <message>
        <source>For version %1 of this application and later</source>
        <translation>Für Version %1 dieser Anwendung und spätere</translation>
    </message>
    <message>
        <source>Open &amp;Homepage</source>
        <translation>&amp;Homepage öffnen</translation>
    </message>
    <message>
        <source>Select a plug-in to see what it does.</source>
        <translation>Wählen Sie ein Plug-in aus, um zu sehen, was es tut.</translation>
    </message>
    <message>
        <source>This version is known not to work with this application.</source>
        <translation>Diese Version funktioniert bekanntermaßen nicht mit dieser Anwendung.</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation>Im &amp;Ordner zeigen</translation>
    </message>
    <message>
        <source>&amp;Remove…</source>
        <translation>&amp;Entfernen …</translation>
    </message>
    <message>
        <source>“%1” is installed already.</source>
        <translation>„%1“ ist bereits installiert.</translation>
    </message>
    <message>
        <source>There is no plug-in in “%1”.</source>
        <translation>In „%1“ ist kein Plug-in enthalten.</translation>
    </message>
    <message>
        <source>The manifest of “%1” is missing or cannot be read.</source>
        <translation>Das Manifest von „%1“ fehlt oder kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The manifest of “%1” names no identifier.</source>
        <translation>Das Manifest von „%1“ nennt keine Kennung.</translation>
    </message>
    <message>
        <source>Incompatible</source>
        <translation>Inkompatibel</translation>
    </message>
    <message>
        <source>Update available</source>
        <translation>Update verfügbar</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>Wird aktualisiert</translation>
    </message>
    <message>
        <source>Update failed</source>
        <translation>Update fehlgeschlagen</translation>
    </message>
    <message>
        <source>Running</source>
        <extracomment>A badge of a plug-in one of whose commands goes on.</extracomment>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>enabled</source>
        <translation>aktiviert</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>deaktiviert</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>Abbre&amp;chen</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is newer.</source>
        <translation>Version %1 ist installiert. Die Datei enthält die neuere Version %2.</translation>
    </message>
    <message>
        <source>The file holds the version that is installed: %1.</source>
        <translation>Die Datei enthält die Version, die installiert ist: %1.</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is older.</source>
        <translation>Version %1 ist installiert. Die Datei enthält die ältere Version %2.</translation>
    </message>
    <message>
        <source>Remove “%1”?</source>
        <translation>„%1“ entfernen?</translation>
    </message>
    <message>
        <source>Its commands are stopped, and its folder is moved to the trash.</source>
        <translation>Seine Befehle werden beendet, und sein Ordner wird in den Papierkorb gelegt.</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>Replace “%1”?</source>
        <translation>„%1“ ersetzen?</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>E&amp;rsetzen</translation>
    </message>
    <message>
        <source>Check for U&amp;pdates</source>
        <translation>Nach &amp;Updates suchen</translation>
    </message>
    <message>
        <source>Update &amp;All</source>
        <translation>Alle a&amp;ktualisieren</translation>
    </message>
    <message>
        <source>Cancel A&amp;ll</source>
        <translation>A&amp;lle abbrechen</translation>
    </message>
    <message>
        <source>&amp;Disable all plug-ins</source>
        <translation>Alle Plug-ins &amp;deaktivieren</translation>
    </message>
    <message>
        <source>Plug-ins</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>Search plug-ins</source>
        <translation>Plug-ins durchsuchen</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>&amp;Installieren</translation>
    </message>
    <message>
        <source>From an &amp;Archive…</source>
        <translation>Aus einem &amp;Archiv …</translation>
    </message>
    <message>
        <source>From a &amp;Folder…</source>
        <translation>Aus einem &amp;Ordner …</translation>
    </message>
    <message>
        <source>Installed plug-ins</source>
        <translation>Installierte Plug-ins</translation>
    </message>
    <message>
        <source>Install Plug-ins</source>
        <translation>Plug-ins installieren</translation>
    </message>
    <message>
        <source>Archives of plug-ins (*.zip)</source>
        <translation>Plug-in-Archive (*.zip)</translation>
    </message>
    <message>
        <source>Plug-ins that were disabled because they do not work with this application: %1</source>
        <translation>Plug-ins, die deaktiviert wurden, weil sie nicht mit dieser Anwendung funktionieren: %1</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>Updates werden gesucht …</translation>
    </message>
    <message>
        <source>Plug-ins: %1  ·  Updates: %2</source>
        <translation>Plug-ins: %1  ·  Updates: %2</translation>
    </message>
    <message>
        <source>All plug-ins are disabled. Enabling one of them leaves the others disabled for good.</source>
        <translation>Alle Plug-ins sind deaktiviert. Wenn Sie eines aktivieren, bleiben die anderen dauerhaft deaktiviert.</translation>
    </message>
    <message>
        <source>“%1” is installed, in version %2.</source>
        <translation>„%1“ ist jetzt in Version %2 installiert.</translation>
    </message>
    <message>
        <source>No editor for plug-ins could be started. The plug-in’s folder is shown instead.</source>
        <translation>Es konnte kein Editor für Plug-ins gestartet werden. Stattdessen wird der Ordner des Plug-ins gezeigt.</translation>
    </message>
    <message>
        <source>“%1” cannot be moved to the trash: %2</source>
        <translation>„%1“ kann nicht in den Papierkorb gelegt werden: %2</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>Wird geladen …</translation>
    </message>
    <message>
        <source>Looking for an update…</source>
        <translation>Ein Update wird gesucht …</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>Version %1 ist verfügbar.</translation>
    </message>
    <message>
        <source>Waits for other downloads.</source>
        <translation>Wartet auf andere Downloads.</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Wird installiert …</translation>
    </message>
    <message>
        <source>Updated to version %1.</source>
        <translation>Auf Version %1 aktualisiert.</translation>
    </message>
    <message>
        <source>&amp;Update</source>
        <translation>&amp;Aktualisieren</translation>
    </message>
    <message>
        <source>Progress of the download</source>
        <translation>Fortschritt des Downloads</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>Erneut &amp;versuchen</translation>
    </message>
    <message>
        <source>The update is not offered any more.</source>
        <translation>Das Update wird nicht mehr angeboten.</translation>
    </message>
    <message>
        <source>The archive of the update is empty or cannot be read.</source>
        <translation>Das Archiv des Updates ist leer oder kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>“%1” cannot be copied: %2</source>
        <translation>„%1“ kann nicht kopiert werden: %2</translation>
    </message>
    <message>
        <source>“%1” is no archive, is empty or cannot be read.</source>
        <translation>„%1“ ist kein Archiv, ist leer oder kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation>Es gibt keine Datei „%1“.</translation>
    </message>
    <message>
        <source>“%1” is neither a plug-in nor a zip archive of one.</source>
        <translation>„%1“ ist weder ein Plug-in noch ein ZIP-Archiv mit einem Plug-in.</translation>
    </message>
    <message>
        <source>“%1” holds a link that leads out of it.</source>
        <translation>„%1“ enthält einen Link, der nach außen führt.</translation>
    </message>
    <message>
        <source>Enable A&amp;gain</source>
        <translation>&amp;Wieder aktivieren</translation>
    </message>
    <message>
        <source>%1 downloaded</source>
        <extracomment>%1 is what has arrived, with its unit.</extracomment>
        <translation>%1 geladen</translation>
    </message>
    <message>
        <source>%1 of %2 downloaded</source>
        <extracomment>%1 is what has arrived, %2 the whole; both with their unit.</extracomment>
        <translation>%1 von %2 geladen</translation>
    </message>
    <message>
        <source>%1, %2 per second</source>
        <extracomment>%1 says what has arrived, %2 what arrives in a second, with its unit.</extracomment>
        <translation>%1, %2 pro Sekunde</translation>
    </message>
</context>
</TS>
