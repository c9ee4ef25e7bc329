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
</context>
</TS>
