<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
<context>
    <name>Localizable</name>
    <message>
        <source>untitled script</source>
        <translation>script sans titre</translation>
    </message>
    <message>
        <source>The extension “%@” is not compatible with your computer’s CPU architecture. Please contact this extension’s developer directly for assistance.</source>
        <extracomment>The message of an alert, %@ is the name of a plug-in.</extracomment>
        <translation>L’extension «&#xa0;%@&#xa0;» n’est pas compatible avec l’architecture du processeur de votre ordinateur. Veuillez contacter directement le développeur de cette extension pour obtenir de l’aide.</translation>
    </message>
    <message>
        <source>Unsupported plug-in</source>
        <translation>Plug-in non pris en charge</translation>
    </message>
    <message>
        <source>untitled</source>
        <translation>sans titre</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; has failed</source>
        <translation>Le transfert depuis «&#xa0;%1&#xa0;» a échoué</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; was cancelled</source>
        <translation>Le transfert depuis «&#xa0;%1&#xa0;» a été annulé</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid URL</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une URL valide</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has not answered in time</source>
        <translation>Le serveur «&#xa0;%1&#xa0;» n’a pas répondu à temps</translation>
    </message>
    <message>
        <source>The URL of &quot;%1&quot; is neither http nor https</source>
        <translation>L’URL de «&#xa0;%1&#xa0;» n’est ni en http ni en https</translation>
    </message>
    <message>
        <source>A server named &quot;%1&quot; cannot be found</source>
        <translation>Aucun serveur nommé «&#xa0;%1&#xa0;» n’a été trouvé</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; cannot be reached</source>
        <translation>Le serveur «&#xa0;%1&#xa0;» est injoignable</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; was lost</source>
        <translation>La connexion à «&#xa0;%1&#xa0;» a été perdue</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; redirects too many times</source>
        <translation>Le serveur «&#xa0;%1&#xa0;» effectue trop de redirections</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has sent an answer that is not HTTP</source>
        <translation>Le serveur «&#xa0;%1&#xa0;» a envoyé une réponse qui n’est pas conforme à HTTP</translation>
    </message>
    <message>
        <source>What the server &quot;%1&quot; has sent cannot be decoded</source>
        <translation>Les données envoyées par le serveur «&#xa0;%1&#xa0;» ne peuvent pas être décodées</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; would not be encrypted, which is not allowed</source>
        <translation>La connexion à «&#xa0;%1&#xa0;» ne serait pas chiffrée, ce qui n’est pas autorisé</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; sends more than is allowed</source>
        <translation>Le serveur «&#xa0;%1&#xa0;» envoie plus de données qu’il n’est autorisé</translation>
    </message>
    <message>
        <source>A secure connection to &quot;%1&quot; cannot be made</source>
        <translation>Impossible d’établir une connexion sécurisée à «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>The certificate of the server &quot;%1&quot; is not trusted</source>
        <translation>Le certificat du serveur «&#xa0;%1&#xa0;» n’est pas fiable</translation>
    </message>
    <message>
        <source>No file can be created for the download from &quot;%1&quot;</source>
        <translation>Impossible de créer un fichier pour le téléchargement depuis «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>The download from &quot;%1&quot; cannot be written to its file</source>
        <translation>Impossible d’écrire le téléchargement depuis «&#xa0;%1&#xa0;» dans son fichier</translation>
    </message>
    <message>
        <source>%1.</source>
        <extracomment>Ends a sentence of this table that has no full stop (%1).</extracomment>
        <translation>%1.</translation>
    </message>
    <message>
        <source>%1: %2.</source>
        <extracomment>A sentence of this table that has no full stop (%1), and what exactly has happened (%2).</extracomment>
        <translation>%1&#xa0;: %2.</translation>
    </message>
    <message>
        <source>Decompressing zip file failed.</source>
        <translation>La décompression du fichier zip a échoué.</translation>
    </message>
    <message>
        <source>Could not create file handle for writing decompressed data to.</source>
        <translation>Impossible d’ouvrir en écriture le fichier destiné aux données décompressées.</translation>
    </message>
    <message>
        <source>Could not create file to decompress to.</source>
        <translation>Impossible de créer le fichier de destination de la décompression.</translation>
    </message>
    <message>
        <source>Invalid file path within zip archive.</source>
        <translation>Chemin de fichier non valide dans l’archive zip.</translation>
    </message>
    <message>
        <source>Can not confirm that the created intermediate folders are sub folders of the destination folder.</source>
        <translation>Impossible de confirmer que les dossiers intermédiaires créés sont des sous-dossiers du dossier de destination.</translation>
    </message>
    <message>
        <source>Could not create intermediate subfolders when decompressing plugin archive.</source>
        <translation>Impossible de créer les sous-dossiers intermédiaires lors de la décompression de l’archive du plug-in.</translation>
    </message>
    <message>
        <source>Failure to install plugin.</source>
        <translation>L’installation du plug-in a échoué.</translation>
    </message>
    <message>
        <source>Plugin update already downloaded.</source>
        <translation>La mise à jour du plug-in a déjà été téléchargée.</translation>
    </message>
    <message>
        <source>Could not obtain url to download plugin update.</source>
        <translation>Impossible d’obtenir l’URL de téléchargement de la mise à jour du plug-in.</translation>
    </message>
    <message>
        <source>The plugin&apos;s identifier and version do not name a folder inside the plugins warehouse.</source>
        <extracomment>The plugins warehouse is a folder of the application, where downloaded updates wait for their installation.</extracomment>
        <translation>L’identifiant et la version du plug-in ne désignent pas un dossier à l’intérieur du dépôt de plug-ins.</translation>
    </message>
    <message>
        <source>The update feed “%1” is larger than %2 MB.</source>
        <translation>Le flux de mises à jour «&#xa0;%1&#xa0;» dépasse %2&#xa0;Mo.</translation>
    </message>
    <message>
        <source>The update feed “%1” is not valid JSON.</source>
        <translation>Le flux de mises à jour «&#xa0;%1&#xa0;» n’est pas du JSON valide.</translation>
    </message>
    <message>
        <source>The update feed “%1” has neither a version with a download URL nor a list of items.</source>
        <translation>Le flux de mises à jour «&#xa0;%1&#xa0;» ne contient ni version accompagnée d’une URL de téléchargement, ni liste d’éléments.</translation>
    </message>
    <message>
        <source>The update feed “%1” offers no version that can be downloaded.</source>
        <translation>Le flux de mises à jour «&#xa0;%1&#xa0;» ne propose aucune version téléchargeable.</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>Log entries</source>
        <translation>Entrées du journal</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>Console</translation>
    </message>
    <message>
        <source>Show entries of</source>
        <translation>Afficher les entrées de</translation>
    </message>
    <message>
        <source>All plug-ins</source>
        <translation>Tous les plug-ins</translation>
    </message>
    <message>
        <source>Lowest level</source>
        <translation>Niveau minimal</translation>
    </message>
    <message>
        <source>All levels</source>
        <translation>Tous les niveaux</translation>
    </message>
    <message>
        <source>Warnings and errors</source>
        <translation>Avertissements et erreurs</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Erreurs</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Search entries</source>
        <translation>Rechercher dans les entrées</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
    <message>
        <source>Selected entry</source>
        <translation>Entrée sélectionnée</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>Of entries in a list that is filtered.</extracomment>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Avertissement</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>Plug-in</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Emplacement</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Stop “%1”</source>
        <translation>Arrêter «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>Running commands</source>
        <translation>Commandes en cours</translation>
    </message>
    <message>
        <source>No commands are running</source>
        <translation>Aucune commande en cours</translation>
    </message>
    <message>
        <source>Running commands: %1</source>
        <translation>Commandes en cours&#xa0;: %1</translation>
    </message>
    <message>
        <source>A script has been running for a long time.</source>
        <translation>Un script est en cours d’exécution depuis longtemps.</translation>
    </message>
    <message>
        <source>“%1” has computed for %2 seconds. Meanwhile the application cannot do anything else.</source>
        <translation>«&#xa0;%1&#xa0;» calcule depuis %2 secondes. Pendant ce temps, l’application ne peut rien faire d’autre.</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Arrêter</translation>
    </message>
    <message>
        <source>&amp;Keep Waiting</source>
        <translation>&amp;Continuer d’attendre</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Ignorer</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Commandes</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Commande</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Raccourci</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>For versions %1 to %2 of this application</source>
        <translation>Pour les versions %1 à %2 de cette application</translation>
    </message>
    <message>
        <source>For version %1 of this application and later</source>
        <translation>Pour la version %1 de cette application et les suivantes</translation>
    </message>
    <message>
        <source>Open &amp;Homepage</source>
        <translation>Ouvrir la page d’acc&amp;ueil</translation>
    </message>
    <message>
        <source>Select a plug-in to see what it does.</source>
        <translation>Sélectionnez un plug-in pour voir ce qu’il fait.</translation>
    </message>
    <message>
        <source>This version is known not to work with this application.</source>
        <translation>Cette version est connue pour ne pas fonctionner avec cette application.</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Modifier</translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation>Afficher dans le d&amp;ossier</translation>
    </message>
    <message>
        <source>&amp;Remove…</source>
        <translation>&amp;Supprimer…</translation>
    </message>
    <message>
        <source>“%1” is installed already.</source>
        <translation>«&#xa0;%1&#xa0;» est déjà installé.</translation>
    </message>
    <message>
        <source>There is no plug-in in “%1”.</source>
        <translation>«&#xa0;%1&#xa0;» ne contient aucun plug-in.</translation>
    </message>
    <message>
        <source>The manifest of “%1” is missing or cannot be read.</source>
        <translation>Le manifeste de «&#xa0;%1&#xa0;» est absent ou illisible.</translation>
    </message>
    <message>
        <source>The manifest of “%1” names no identifier.</source>
        <translation>Le manifeste de «&#xa0;%1&#xa0;» n’indique aucun identifiant.</translation>
    </message>
    <message>
        <source>Incompatible</source>
        <translation>Incompatible</translation>
    </message>
    <message>
        <source>Update available</source>
        <translation>Mise à jour disponible</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>Mise à jour en cours</translation>
    </message>
    <message>
        <source>Update failed</source>
        <translation>Échec de la mise à jour</translation>
    </message>
    <message>
        <source>Running</source>
        <extracomment>A badge of a plug-in one of whose commands goes on.</extracomment>
        <translation>En cours</translation>
    </message>
    <message>
        <source>enabled</source>
        <translation>activé</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>désactivé</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is newer.</source>
        <translation>La version %1 est installée. Le fichier contient la version %2, plus récente.</translation>
    </message>
    <message>
        <source>The file holds the version that is installed: %1.</source>
        <translation>Le fichier contient la version installée&#xa0;: %1.</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is older.</source>
        <translation>La version %1 est installée. Le fichier contient la version %2, plus ancienne.</translation>
    </message>
    <message>
        <source>Remove “%1”?</source>
        <translation>Supprimer «&#xa0;%1&#xa0;»&#xa0;?</translation>
    </message>
    <message>
        <source>Its commands are stopped, and its folder is moved to the trash.</source>
        <translation>Ses commandes sont arrêtées et son dossier est placé dans la corbeille.</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Supprimer</translation>
    </message>
    <message>
        <source>Replace “%1”?</source>
        <translation>Remplacer «&#xa0;%1&#xa0;»&#xa0;?</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Remplacer</translation>
    </message>
    <message>
        <source>Check for U&amp;pdates</source>
        <translation>Rechercher des mises à &amp;jour</translation>
    </message>
    <message>
        <source>Update &amp;All</source>
        <translation>&amp;Tout mettre à jour</translation>
    </message>
    <message>
        <source>Cancel A&amp;ll</source>
        <translation>Tout a&amp;nnuler</translation>
    </message>
    <message>
        <source>&amp;Disable all plug-ins</source>
        <translation>&amp;Désactiver tous les plug-ins</translation>
    </message>
    <message>
        <source>Plug-ins</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>Search plug-ins</source>
        <translation>Rechercher des plug-ins</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>&amp;Installer</translation>
    </message>
    <message>
        <source>From an &amp;Archive…</source>
        <translation>À partir d’une &amp;archive…</translation>
    </message>
    <message>
        <source>From a &amp;Folder…</source>
        <translation>À partir d’un &amp;dossier…</translation>
    </message>
    <message>
        <source>Installed plug-ins</source>
        <translation>Plug-ins installés</translation>
    </message>
    <message>
        <source>Install Plug-ins</source>
        <translation>Installer des plug-ins</translation>
    </message>
    <message>
        <source>Archives of plug-ins (*.zip)</source>
        <translation>Archives de plug-ins (*.zip)</translation>
    </message>
    <message>
        <source>Plug-ins that were disabled because they do not work with this application: %1</source>
        <translation>Plug-ins désactivés parce qu’ils ne fonctionnent pas avec cette application&#xa0;: %1</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>Recherche de mises à jour…</translation>
    </message>
    <message>
        <source>Plug-ins: %1  ·  Updates: %2</source>
        <translation>Plug-ins&#xa0;: %1  ·  Mises à jour&#xa0;: %2</translation>
    </message>
    <message>
        <source>All plug-ins are disabled. Enabling one of them leaves the others disabled for good.</source>
        <translation>Tous les plug-ins sont désactivés. Si vous en activez un, les autres restent désactivés durablement.</translation>
    </message>
    <message>
        <source>“%1” is installed, in version %2.</source>
        <translation>«&#xa0;%1&#xa0;» est installé, dans la version %2.</translation>
    </message>
    <message>
        <source>No editor for plug-ins could be started. The plug-in’s folder is shown instead.</source>
        <translation>Aucun éditeur de plug-ins n’a pu être lancé. Le dossier du plug-in est affiché à la place.</translation>
    </message>
    <message>
        <source>“%1” cannot be moved to the trash: %2</source>
        <translation>Impossible de placer «&#xa0;%1&#xa0;» dans la corbeille&#xa0;: %2</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>Téléchargement…</translation>
    </message>
    <message>
        <source>Looking for an update…</source>
        <translation>Recherche d’une mise à jour…</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>La version %1 est disponible.</translation>
    </message>
    <message>
        <source>Waits for other downloads.</source>
        <translation>En attente d’autres téléchargements.</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Installation…</translation>
    </message>
    <message>
        <source>Updated to version %1.</source>
        <translation>Mis à jour vers la version %1.</translation>
    </message>
    <message>
        <source>&amp;Update</source>
        <translation>M&amp;ettre à jour</translation>
    </message>
    <message>
        <source>Progress of the download</source>
        <translation>Progression du téléchargement</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>&amp;Réessayer</translation>
    </message>
    <message>
        <source>The update is not offered any more.</source>
        <translation>La mise à jour n’est plus proposée.</translation>
    </message>
    <message>
        <source>The archive of the update is empty or cannot be read.</source>
        <translation>L’archive de la mise à jour est vide ou illisible.</translation>
    </message>
    <message>
        <source>“%1” cannot be copied: %2</source>
        <translation>Impossible de copier «&#xa0;%1&#xa0;»&#xa0;: %2</translation>
    </message>
    <message>
        <source>“%1” is no archive, is empty or cannot be read.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une archive, est vide ou est illisible.</translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation>Le fichier «&#xa0;%1&#xa0;» n’existe pas.</translation>
    </message>
    <message>
        <source>“%1” is neither a plug-in nor a zip archive of one.</source>
        <translation>«&#xa0;%1&#xa0;» n’est ni un plug-in ni une archive zip d’un plug-in.</translation>
    </message>
    <message>
        <source>“%1” holds a link that leads out of it.</source>
        <translation>«&#xa0;%1&#xa0;» contient un lien qui mène hors de lui.</translation>
    </message>
    <message>
        <source>Enable A&amp;gain</source>
        <translation>Réacti&amp;ver</translation>
    </message>
    <message>
        <source>%1 downloaded</source>
        <extracomment>%1 is what has arrived, with its unit.</extracomment>
        <translation>%1 téléchargés</translation>
    </message>
    <message>
        <source>%1 of %2 downloaded</source>
        <extracomment>%1 is what has arrived, %2 the whole; both with their unit.</extracomment>
        <translation>%1 sur %2 téléchargés</translation>
    </message>
    <message>
        <source>%1, %2 per second</source>
        <extracomment>%1 says what has arrived, %2 what arrives in a second, with its unit.</extracomment>
        <translation>%1, %2 par seconde</translation>
    </message>
</context>
</TS>
