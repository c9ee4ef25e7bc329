<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CanvasView</name>
    <message>
        <source>Canvas</source>
        <translation>Zeichenfläche</translation>
    </message>
    <message>
        <source>The layers as they look. Arrow keys move what is selected.</source>
        <translation>Die Ebenen, wie sie aussehen. Pfeiltasten bewegen, was ausgewählt ist.</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Bewegen</translation>
    </message>
</context>
<context>
    <name>ColourButton</name>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1 – Delete removes it</source>
        <translation>%1 – Entfernen löscht sie</translation>
    </message>
</context>
<context>
    <name>ContentSection</name>
    <message>
        <source>Content</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>No picture</source>
        <translation>Kein Bild</translation>
    </message>
    <message>
        <source>Choose a picture…</source>
        <translation>Bild wählen…</translation>
    </message>
    <message>
        <source>Choose a picture</source>
        <translation>Bild wählen</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.jpeg *.gif *.webp *.bmp)</source>
        <translation>Bilder (*.png *.jpg *.jpeg *.gif *.webp *.bmp)</translation>
    </message>
</context>
<context>
    <name>DataMenu</name>
    <message>
        <source>Fill with &amp;Data</source>
        <translation>Mit &amp;Daten füllen</translation>
    </message>
    <message>
        <source>No Plug-in Supplies Data</source>
        <translation>Kein Plug-in liefert Daten</translation>
    </message>
</context>
<context>
    <name>DocumentFiles</name>
    <message>
        <source>Save Document</source>
        <translation>Dokument sichern</translation>
    </message>
    <message>
        <source>Documents (*.json)</source>
        <translation>Dokumente (*.json)</translation>
    </message>
    <message>
        <source>“%1” is open in another window. Close that window first, or choose another name.</source>
        <translation>„%1“ ist in einem anderen Fenster geöffnet. Schließen Sie zuerst jenes Fenster, oder wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>The document was not saved.</source>
        <translation>Das Dokument wurde nicht gesichert.</translation>
    </message>
    <message>
        <source>Save the changes to “%1”?</source>
        <translation>Die Änderungen an „%1“ sichern?</translation>
    </message>
    <message>
        <source>They are lost otherwise.</source>
        <translation>Sie gehen sonst verloren.</translation>
    </message>
</context>
<context>
    <name>DocumentMenus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt benutzt</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Sichern</translation>
    </message>
    <message>
        <source>Save &amp;As…</source>
        <translation>Sichern &amp;unter…</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>No Documents</source>
        <translation>Keine Dokumente</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>&amp;Plugins</source>
        <translation>&amp;Plug-ins</translation>
    </message>
    <message>
        <source>Install Plug-in…</source>
        <translation>Plug-in installieren…</translation>
    </message>
    <message>
        <source>Show Plug-ins Folder</source>
        <translation>Plug-in-Ordner zeigen</translation>
    </message>
    <message>
        <source>Reload Plug-ins</source>
        <translation>Plug-ins neu laden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Widerrufen</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Duplicate</source>
        <translation>&amp;Duplizieren</translation>
    </message>
    <message>
        <source>De&amp;lete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Select &amp;Nothing</source>
        <translation>&amp;Nichts auswählen</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>&amp;Rectangle</source>
        <translation>&amp;Rechteck</translation>
    </message>
    <message>
        <source>&amp;Oval</source>
        <translation>&amp;Oval</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>&amp;Text</translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation>&amp;Bild</translation>
    </message>
    <message>
        <source>&amp;Arrange</source>
        <translation>&amp;Anordnen</translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <translation>&amp;Gruppieren</translation>
    </message>
    <message>
        <source>&amp;Ungroup</source>
        <translation>Gruppe a&amp;uflösen</translation>
    </message>
    <message>
        <source>Bring to &amp;Front</source>
        <translation>Ganz nach &amp;vorn</translation>
    </message>
    <message>
        <source>Bring For&amp;ward</source>
        <translation>&amp;Weiter nach vorn</translation>
    </message>
    <message>
        <source>Send &amp;Backward</source>
        <translation>Weiter nach &amp;hinten</translation>
    </message>
    <message>
        <source>Send to Bac&amp;k</source>
        <translation>Ganz nach hi&amp;nten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>Dar&amp;stellung</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>Ver&amp;größern</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>&amp;Actual Size</source>
        <translation>&amp;Originalgröße</translation>
    </message>
    <message>
        <source>&amp;Fit in Window</source>
        <translation>In &amp;Fenster einpassen</translation>
    </message>
    <message>
        <source>Fit &amp;Selection</source>
        <translation>&amp;Auswahl einpassen</translation>
    </message>
    <message>
        <source>A&amp;ppearance</source>
        <translation>&amp;Erscheinungsbild</translation>
    </message>
    <message>
        <source>&amp;System</source>
        <translation>&amp;System</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dunkel</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About Korvan</source>
        <translation>Ü&amp;ber Korvan</translation>
    </message>
    <message>
        <source>About Korvan</source>
        <translation>Über Korvan</translation>
    </message>
    <message>
        <source>The reference host of KorvanPluginManager, as version %1 of the application.</source>
        <translation>Das Referenzprogramm von KorvanPluginManager, als Version %1 des Programms.</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Minimize</source>
        <translation>&amp;Minimieren</translation>
    </message>
    <message>
        <source>Plug-ins…</source>
        <translation>Plug-ins…</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Konsole</translation>
    </message>
    <message>
        <source>Plug-ins… (%1 disabled)</source>
        <translation>Plug-ins… (%1 deaktiviert)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Aus&amp;schneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einsetzen</translation>
    </message>
</context>
<context>
    <name>DocumentSession</name>
    <message>
        <source>Untitled</source>
        <translation>Ohne Titel</translation>
    </message>
</context>
<context>
    <name>DocumentWindow</name>
    <message>
        <source>Layers</source>
        <translation>Ebenen</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Informationen</translation>
    </message>
</context>
<context>
    <name>ErrorIndicator</name>
    <message>
        <source>Errors: %1</source>
        <translation>Fehler: %1</translation>
    </message>
</context>
<context>
    <name>GeneralSection</name>
    <message>
        <source>Layer</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Horizontal position</source>
        <translation>Horizontale Position</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>Vertical position</source>
        <translation>Vertikale Position</translation>
    </message>
    <message>
        <source>W</source>
        <translation>B</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>H</source>
        <translation>H</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Rahmen</translation>
    </message>
    <message>
        <source>%1 layers</source>
        <translation>%1 Ebenen</translation>
    </message>
</context>
<context>
    <name>HostApplication</name>
    <message>
        <source>Start without plug-ins?</source>
        <translation>Ohne Plug-ins starten?</translation>
    </message>
    <message>
        <source>Safe Mode</source>
        <translation>Sicherer Modus</translation>
    </message>
    <message>
        <source>Load Plug-ins</source>
        <translation>Plug-ins laden</translation>
    </message>
    <message>
        <source>The document was not opened.</source>
        <translation>Das Dokument wurde nicht geöffnet.</translation>
    </message>
    <message>
        <source>Open Document</source>
        <translation>Dokument öffnen</translation>
    </message>
    <message>
        <source>Documents (*.json)</source>
        <translation>Dokumente (*.json)</translation>
    </message>
    <message>
        <source>Korvan has ended unexpectedly while plug-ins were loading the last time. In safe mode no plug-in is enabled, so that you can remove the one that is to blame.</source>
        <translation>Korvan wurde beim letzten Mal unerwartet beendet, während Plug-ins geladen wurden. Im sicheren Modus ist kein Plug-in aktiv, sodass Sie das verantwortliche entfernen können.</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>Nothing is selected.</source>
        <translation>Nichts ist ausgewählt.</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Informationen</translation>
    </message>
</context>
<context>
    <name>InspectorSection</name>
    <message>
        <source>Style</source>
        <translation>Stil</translation>
    </message>
</context>
<context>
    <name>JSONTree</name>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>LayerTexts</name>
    <message>
        <source>Move</source>
        <translation>Bewegen</translation>
    </message>
    <message>
        <source>Resize</source>
        <translation>Größe ändern</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Rectangle</source>
        <translation>Rechteck</translation>
    </message>
    <message>
        <source>Oval</source>
        <translation>Oval</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Insert %1</source>
        <translation>%1 einfügen</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Ungroup</source>
        <translation>Gruppe auflösen</translation>
    </message>
    <message>
        <source>Arrange</source>
        <translation>Anordnen</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einsetzen</translation>
    </message>
</context>
<context>
    <name>LayerTreeModel</name>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Move Layers</source>
        <translation>Ebenen bewegen</translation>
    </message>
</context>
<context>
    <name>LayersPanel</name>
    <message>
        <source>Layers</source>
        <translation>Ebenen</translation>
    </message>
    <message>
        <source>All layers of the document, topmost first.</source>
        <translation>Alle Ebenen des Dokuments, die oberste zuerst.</translation>
    </message>
</context>
<context>
    <name>PluginDataSection</name>
    <message>
        <source>Plug-in Data</source>
        <translation>Plug-in-Daten</translation>
    </message>
    <message>
        <source>No plug-in keeps anything on this layer.</source>
        <translation>Kein Plug-in bewahrt etwas an dieser Ebene auf.</translation>
    </message>
    <message>
        <source>Plug-in data of the layer</source>
        <translation>Plug-in-Daten der Ebene</translation>
    </message>
</context>
<context>
    <name>PluginsMenuController</name>
    <message>
        <source>No Plug-ins</source>
        <translation>Keine Plug-ins</translation>
    </message>
</context>
<context>
    <name>StyleSection</name>
    <message>
        <source>Style</source>
        <translation>Stil</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Fill</source>
        <translation>Füllung</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>Border width</source>
        <translation>Randstärke</translation>
    </message>
    <message>
        <source>Corner radius</source>
        <translation>Eckenradius</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schrift</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Schriftgröße</translation>
    </message>
    <message>
        <source>Font weight</source>
        <translation>Schriftstärke</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Leicht</translation>
    </message>
    <message>
        <source>Regular</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>Weight</source>
        <translation>Stärke</translation>
    </message>
    <message>
        <source>Alignment</source>
        <translation>Ausrichtung</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
</context>
<context>
    <name>WindowMenu</name>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
</context>
<context>
    <name>ZoomControl</name>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Fit in Window</source>
        <translation>In Fenster einpassen</translation>
    </message>
</context>
</TS>
