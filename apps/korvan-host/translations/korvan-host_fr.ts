<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>CanvasView</name>
    <message>
        <source>Canvas</source>
        <translation>Canevas</translation>
    </message>
    <message>
        <source>The layers as they look. Arrow keys move what is selected.</source>
        <translation>Les calques tels qu’ils apparaissent. Les touches fléchées déplacent la sélection.</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Déplacer</translation>
    </message>
</context>
<context>
    <name>ColourButton</name>
    <message>
        <source>none</source>
        <translation>aucune</translation>
    </message>
    <message>
        <source>%1 – Delete removes it</source>
        <translation>%1 – Suppr l’enlève</translation>
    </message>
</context>
<context>
    <name>ContentSection</name>
    <message>
        <source>Content</source>
        <translation>Contenu</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Texte</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>No picture</source>
        <translation>Aucune image</translation>
    </message>
    <message>
        <source>Choose a picture…</source>
        <translation>Choisir une image…</translation>
    </message>
    <message>
        <source>Choose a picture</source>
        <translation>Choisir une image</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.jpeg *.gif *.webp *.bmp)</source>
        <translation>Images (*.png *.jpg *.jpeg *.gif *.webp *.bmp)</translation>
    </message>
</context>
<context>
    <name>DataMenu</name>
    <message>
        <source>Fill with &amp;Data</source>
        <translation>Remplir de &amp;données</translation>
    </message>
    <message>
        <source>No Plug-in Supplies Data</source>
        <translation>Aucun plug-in ne fournit de données</translation>
    </message>
</context>
<context>
    <name>DocumentFiles</name>
    <message>
        <source>Save Document</source>
        <translation>Enregistrer le document</translation>
    </message>
    <message>
        <source>Documents (*.json)</source>
        <translation>Documents (*.json)</translation>
    </message>
    <message>
        <source>“%1” is open in another window. Close that window first, or choose another name.</source>
        <translation>«&#xa0;%1&#xa0;» est ouvert dans une autre fenêtre. Fermez d’abord cette fenêtre ou choisissez un autre nom.</translation>
    </message>
    <message>
        <source>The document was not saved.</source>
        <translation>Le document n’a pas été enregistré.</translation>
    </message>
    <message>
        <source>Save the changes to “%1”?</source>
        <translation>Enregistrer les modifications de «&#xa0;%1&#xa0;»&#xa0;?</translation>
    </message>
    <message>
        <source>They are lost otherwise.</source>
        <translation>Sinon, elles seront perdues.</translation>
    </message>
</context>
<context>
    <name>DocumentMenus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Nouveau</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>&amp;Ouvrir…</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>Ouvrir &amp;récent</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Enregistrer</translation>
    </message>
    <message>
        <source>Save &amp;As…</source>
        <translation>Enregistrer &amp;sous…</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>No Documents</source>
        <translation>Aucun document</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>E&amp;ffacer</translation>
    </message>
    <message>
        <source>&amp;Plugins</source>
        <translation>&amp;Plug-ins</translation>
    </message>
    <message>
        <source>Install Plug-in…</source>
        <translation>Installer un plug-in…</translation>
    </message>
    <message>
        <source>Show Plug-ins Folder</source>
        <translation>Afficher le dossier des plug-ins</translation>
    </message>
    <message>
        <source>Reload Plug-ins</source>
        <translation>Recharger les plug-ins</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>É&amp;dition</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rétablir</translation>
    </message>
    <message>
        <source>&amp;Duplicate</source>
        <translation>&amp;Dupliquer</translation>
    </message>
    <message>
        <source>De&amp;lete</source>
        <translation>&amp;Supprimer</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Tout sélectionner</translation>
    </message>
    <message>
        <source>Select &amp;Nothing</source>
        <translation>Ne &amp;rien sélectionner</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>&amp;Insertion</translation>
    </message>
    <message>
        <source>&amp;Rectangle</source>
        <translation>&amp;Rectangle</translation>
    </message>
    <message>
        <source>&amp;Oval</source>
        <translation>&amp;Ovale</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>&amp;Texte</translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation>&amp;Image</translation>
    </message>
    <message>
        <source>&amp;Arrange</source>
        <translation>Disp&amp;osition</translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <translation>&amp;Grouper</translation>
    </message>
    <message>
        <source>&amp;Ungroup</source>
        <translation>&amp;Dégrouper</translation>
    </message>
    <message>
        <source>Bring to &amp;Front</source>
        <translation>Mettre au &amp;premier plan</translation>
    </message>
    <message>
        <source>Bring For&amp;ward</source>
        <translation>&amp;Avancer</translation>
    </message>
    <message>
        <source>Send &amp;Backward</source>
        <translation>&amp;Reculer</translation>
    </message>
    <message>
        <source>Send to Bac&amp;k</source>
        <translation>Mettre à l’arrière-p&amp;lan</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>Pré&amp;sentation</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>&amp;Agrandir</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>&amp;Réduire</translation>
    </message>
    <message>
        <source>&amp;Actual Size</source>
        <translation>Taille réell&amp;e</translation>
    </message>
    <message>
        <source>&amp;Fit in Window</source>
        <translation>Ajuster à la &amp;fenêtre</translation>
    </message>
    <message>
        <source>Fit &amp;Selection</source>
        <translation>Ajuster à la &amp;sélection</translation>
    </message>
    <message>
        <source>A&amp;ppearance</source>
        <translation>A&amp;pparence</translation>
    </message>
    <message>
        <source>&amp;System</source>
        <translation>&amp;Système</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Clair</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>S&amp;ombre</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Aide</translation>
    </message>
    <message>
        <source>&amp;About Korvan</source>
        <translation>À &amp;propos de Korvan</translation>
    </message>
    <message>
        <source>About Korvan</source>
        <translation>À propos de Korvan</translation>
    </message>
    <message>
        <source>The reference host of KorvanPluginManager, as version %1 of the application.</source>
        <translation>L’application de référence de KorvanPluginManager, en tant que version %1 de l’application.</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Outils</translation>
    </message>
    <message>
        <source>&amp;Minimize</source>
        <translation>&amp;Réduire</translation>
    </message>
    <message>
        <source>Plug-ins…</source>
        <translation>Plug-ins…</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Console</translation>
    </message>
    <message>
        <source>Plug-ins… (%1 disabled)</source>
        <translation>Plug-ins… (désactivés : %1)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Co&amp;uper</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>Co&amp;ller</translation>
    </message>
</context>
<context>
    <name>DocumentSession</name>
    <message>
        <source>Untitled</source>
        <translation>Sans titre</translation>
    </message>
</context>
<context>
    <name>DocumentWindow</name>
    <message>
        <source>Layers</source>
        <translation>Calques</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Inspecteur</translation>
    </message>
</context>
<context>
    <name>ErrorIndicator</name>
    <message>
        <source>Errors: %1</source>
        <translation>Erreurs : %1</translation>
    </message>
</context>
<context>
    <name>GeneralSection</name>
    <message>
        <source>Layer</source>
        <translation>Calque</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Renommer</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Horizontal position</source>
        <translation>Position horizontale</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>Vertical position</source>
        <translation>Position verticale</translation>
    </message>
    <message>
        <source>W</source>
        <translation>L</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Largeur</translation>
    </message>
    <message>
        <source>H</source>
        <translation>H</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Hauteur</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Cadre</translation>
    </message>
    <message>
        <source>%1 layers</source>
        <translation>%1 calques</translation>
    </message>
</context>
<context>
    <name>HostApplication</name>
    <message>
        <source>Start without plug-ins?</source>
        <translation>Démarrer sans plug-ins&#xa0;?</translation>
    </message>
    <message>
        <source>Safe Mode</source>
        <translation>Mode sans échec</translation>
    </message>
    <message>
        <source>Load Plug-ins</source>
        <translation>Charger les plug-ins</translation>
    </message>
    <message>
        <source>The document was not opened.</source>
        <translation>Le document n’a pas été ouvert.</translation>
    </message>
    <message>
        <source>Open Document</source>
        <translation>Ouvrir un document</translation>
    </message>
    <message>
        <source>Documents (*.json)</source>
        <translation>Documents (*.json)</translation>
    </message>
    <message>
        <source>Korvan has ended unexpectedly while plug-ins were loading the last time. In safe mode no plug-in is enabled, so that you can remove the one that is to blame.</source>
        <translation>La dernière fois, Korvan s’est arrêté de façon inattendue pendant le chargement des plug-ins. En mode sans échec, aucun plug-in n’est activé : vous pouvez ainsi supprimer celui qui est en cause.</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>Nothing is selected.</source>
        <translation>Aucune sélection.</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>Inspecteur</translation>
    </message>
</context>
<context>
    <name>InspectorSection</name>
    <message>
        <source>Style</source>
        <translation>Style</translation>
    </message>
</context>
<context>
    <name>JSONTree</name>
    <message>
        <source>Key</source>
        <translation>Clé</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
</context>
<context>
    <name>LayerTexts</name>
    <message>
        <source>Move</source>
        <translation>Déplacer</translation>
    </message>
    <message>
        <source>Resize</source>
        <translation>Redimensionner</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Modifier</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Texte</translation>
    </message>
    <message>
        <source>Rectangle</source>
        <translation>Rectangle</translation>
    </message>
    <message>
        <source>Oval</source>
        <translation>Ovale</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Groupe</translation>
    </message>
    <message>
        <source>Insert %1</source>
        <translation>Insérer&#xa0;: %1</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Dupliquer</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Ungroup</source>
        <translation>Dégrouper</translation>
    </message>
    <message>
        <source>Arrange</source>
        <translation>Disposer</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Coller</translation>
    </message>
</context>
<context>
    <name>LayerTreeModel</name>
    <message>
        <source>Rename</source>
        <translation>Renommer</translation>
    </message>
    <message>
        <source>Move Layers</source>
        <translation>Déplacer des calques</translation>
    </message>
</context>
<context>
    <name>LayersPanel</name>
    <message>
        <source>Layers</source>
        <translation>Calques</translation>
    </message>
    <message>
        <source>All layers of the document, topmost first.</source>
        <translation>Tous les calques du document, du premier plan à l’arrière-plan.</translation>
    </message>
</context>
<context>
    <name>PluginDataSection</name>
    <message>
        <source>Plug-in Data</source>
        <translation>Données des plug-ins</translation>
    </message>
    <message>
        <source>No plug-in keeps anything on this layer.</source>
        <translation>Aucun plug-in ne conserve de données sur ce calque.</translation>
    </message>
    <message>
        <source>Plug-in data of the layer</source>
        <translation>Données des plug-ins sur le calque</translation>
    </message>
</context>
<context>
    <name>PluginsMenuController</name>
    <message>
        <source>No Plug-ins</source>
        <translation>Aucun plug-in</translation>
    </message>
</context>
<context>
    <name>StyleSection</name>
    <message>
        <source>Style</source>
        <translation>Style</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Opacité</translation>
    </message>
    <message>
        <source>Fill</source>
        <translation>Remplissage</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>Bordure</translation>
    </message>
    <message>
        <source>Border width</source>
        <translation>Épaisseur</translation>
    </message>
    <message>
        <source>Corner radius</source>
        <translation>Rayon</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Police</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Corps</translation>
    </message>
    <message>
        <source>Font weight</source>
        <translation>Graisse de la police</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Maigre</translation>
    </message>
    <message>
        <source>Regular</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>Moyen</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Gras</translation>
    </message>
    <message>
        <source>Weight</source>
        <translation>Graisse</translation>
    </message>
    <message>
        <source>Alignment</source>
        <translation>Alignement</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Gauche</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>Centre</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Droite</translation>
    </message>
</context>
<context>
    <name>WindowMenu</name>
    <message>
        <source>&amp;Window</source>
        <translation>Fe&amp;nêtre</translation>
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
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>Fit in Window</source>
        <translation>Ajuster à la fenêtre</translation>
    </message>
</context>
</TS>
