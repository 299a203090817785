<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>Arrival</name>
    <message>
        <source>The clipboard holds no molecule</source>
        <translation>Le presse-papiers ne contient pas de molécule</translation>
    </message>
    <message>
        <source>not a valid workspace</source>
        <translation>espace de travail non valide</translation>
    </message>
    <message>
        <source>The text on the clipboard is too long</source>
        <translation>Le texte du presse-papiers est trop long</translation>
    </message>
    <message>
        <source>kytconvert, which reads this, is not installed</source>
        <translation>kytconvert, qui lit ce format, n’est pas installé</translation>
    </message>
    <message>
        <source>Clipboard</source>
        <translation>presse-papiers</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>fichier non régulier</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>trop volumineux</translation>
    </message>
</context>
<context>
    <name>Converter</name>
    <message>
        <source>kytconvert cannot be started</source>
        <translation>impossible de démarrer kytconvert</translation>
    </message>
    <message>
        <source>kytconvert took too long</source>
        <translation>kytconvert a mis trop de temps</translation>
    </message>
    <message>
        <source>kytconvert failed</source>
        <translation>kytconvert a échoué</translation>
    </message>
</context>
<context>
    <name>KytAtomProperties</name>
    <message>
        <source>Atom Properties</source>
        <translation>Propriétés de l’atome</translation>
    </message>
    <message>
        <source>cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&lt;b&gt;Atom &lt;/b&gt;</source>
        <translation>&lt;b&gt;Atome&lt;/b&gt;</translation>
    </message>
    <message>
        <source>&lt;b&gt;Color :&lt;/b&gt;</source>
        <translation>&lt;b&gt;Couleur&#xa0;:&lt;/b&gt;</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>B</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>V</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>R</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <source>Red, 0 to 255</source>
        <translation>Rouge, de 0 à 255</translation>
    </message>
    <message>
        <source>Green, 0 to 255</source>
        <translation>Vert, de 0 à 255</translation>
    </message>
    <message>
        <source>Blue, 0 to 255</source>
        <translation>Bleu, de 0 à 255</translation>
    </message>
</context>
<context>
    <name>KytBondProperties</name>
    <message>
        <source>Bond Properties</source>
        <translation>Propriétés de la liaison</translation>
    </message>
    <message>
        <source>cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Bond Projection Angle</source>
        <translation>Angle de projection</translation>
    </message>
</context>
<context>
    <name>KytStudioApp</name>
    <message>
        <source>Drawing</source>
        <translation>Dessin</translation>
    </message>
    <message>
        <source>Ready.</source>
        <translation>Prêt.</translation>
    </message>
    <message>
        <source>Ambiguous &quot;%1&quot; not handled</source>
        <translation>«&#xa0;%1&#xa0;» est ambigu et reste sans effet</translation>
    </message>
    <message>
        <source>%d Atoms</source>
        <translation>Atomes&#xa0;: %d</translation>
    </message>
    <message>
        <source>Toggle toolbar...</source>
        <translation>Affichage de la barre d’outils…</translation>
    </message>
    <message>
        <source>Toggle statusbar...</source>
        <translation>Affichage de la barre d’état…</translation>
    </message>
    <message>
        <source>About...</source>
        <translation>À propos de KytStudio</translation>
    </message>
    <message>
        <source>Opening I3D View</source>
        <translation>Ouverture de la vue I3D</translation>
    </message>
    <message>
        <source>New File</source>
        <translation>Nouveau fichier</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Nouveau</translation>
    </message>
    <message>
        <source>Ctrl+N</source>
        <translation>Ctrl+N</translation>
    </message>
    <message>
        <source>Creates a new document</source>
        <translation>Crée un nouveau document</translation>
    </message>
    <message>
        <source>New File

Creates a new document</source>
        <translation>Nouveau fichier

Crée un nouveau document</translation>
    </message>
    <message>
        <source>Open File</source>
        <translation>Ouvrir un fichier</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Ouvrir…</translation>
    </message>
    <message>
        <source>Ctrl+O</source>
        <translation>Ctrl+O</translation>
    </message>
    <message>
        <source>Opens an existing document</source>
        <translation>Ouvre un document existant</translation>
    </message>
    <message>
        <source>Open File

Opens an existing document</source>
        <translation>Ouvrir un fichier

Ouvre un document existant</translation>
    </message>
    <message>
        <source>Save File</source>
        <translation>Enregistrer le fichier</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Enregistrer</translation>
    </message>
    <message>
        <source>Ctrl+S</source>
        <translation>Ctrl+S</translation>
    </message>
    <message>
        <source>Saves the actual document</source>
        <translation>Enregistre le document actuel</translation>
    </message>
    <message>
        <source>Save File.

Saves the actual document</source>
        <translation>Enregistrer le fichier

Enregistre le document actuel</translation>
    </message>
    <message>
        <source>Save File As</source>
        <translation>Enregistrer le fichier sous</translation>
    </message>
    <message>
        <source>Save &amp;as...</source>
        <translation>Enregistrer &amp;sous…</translation>
    </message>
    <message>
        <source>Saves the actual document under a new filename</source>
        <translation>Enregistre le document actuel sous un nouveau nom</translation>
    </message>
    <message>
        <source>Save As

Saves the actual document under a new filename</source>
        <translation>Enregistrer sous

Enregistre le document actuel sous un nouveau nom</translation>
    </message>
    <message>
        <source>Close File</source>
        <translation>Fermer le fichier</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation>Ctrl+W</translation>
    </message>
    <message>
        <source>Closes the actual document</source>
        <translation>Ferme le document actuel</translation>
    </message>
    <message>
        <source>Close File

Closes the actual document</source>
        <translation>Fermer le fichier

Ferme le document actuel</translation>
    </message>
    <message>
        <source>Print File</source>
        <translation>Imprimer le fichier</translation>
    </message>
    <message>
        <source>&amp;Print</source>
        <translation>&amp;Imprimer</translation>
    </message>
    <message>
        <source>Ctrl+P</source>
        <translation>Ctrl+P</translation>
    </message>
    <message>
        <source>Prints out the actual document</source>
        <translation>Imprime le document actuel</translation>
    </message>
    <message>
        <source>Print File

Prints out the actual document</source>
        <translation>Imprimer le fichier

Imprime le document actuel</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Quits the application</source>
        <translation>Quitte l’application</translation>
    </message>
    <message>
        <source>Exit

Quits the application</source>
        <translation>Quitter

Quitte l’application</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Barre d’outils</translation>
    </message>
    <message>
        <source>Tool&amp;bar</source>
        <translation>&amp;Barre d’outils</translation>
    </message>
    <message>
        <source>Enables/disables the toolbar</source>
        <translation>Affiche ou masque la barre d’outils</translation>
    </message>
    <message>
        <source>Toolbar

Enables/disables the toolbar</source>
        <translation>Barre d’outils

Affiche ou masque la barre d’outils</translation>
    </message>
    <message>
        <source>Statusbar</source>
        <translation>Barre d’état</translation>
    </message>
    <message>
        <source>&amp;Statusbar</source>
        <translation>Barre d’&amp;état</translation>
    </message>
    <message>
        <source>Enables/disables the statusbar</source>
        <translation>Affiche ou masque la barre d’état</translation>
    </message>
    <message>
        <source>Statusbar

Enables/disables the statusbar</source>
        <translation>Barre d’état

Affiche ou masque la barre d’état</translation>
    </message>
    <message>
        <source>MolLib</source>
        <translation>MolLib</translation>
    </message>
    <message>
        <source>&amp;MolLib</source>
        <translation>&amp;MolLib</translation>
    </message>
    <message>
        <source>Enables/disables the Library Toolbar</source>
        <translation>Affiche ou masque la barre de la bibliothèque</translation>
    </message>
    <message>
        <source>MolLib

Enables/disables the Library Toolbar</source>
        <translation>MolLib

Affiche ou masque la barre de la bibliothèque</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>&amp;About...</source>
        <translation>À &amp;propos…</translation>
    </message>
    <message>
        <source>About the application</source>
        <translation>Informations sur l’application</translation>
    </message>
    <message>
        <source>About

About the application</source>
        <translation>À propos

Informations sur l’application</translation>
    </message>
    <message>
        <source>Insert Molecule from Templates</source>
        <translation>Insérer une molécule à partir des modèles</translation>
    </message>
    <message>
        <source>&amp;Insert Template</source>
        <translation>&amp;Insérer un modèle</translation>
    </message>
    <message>
        <source>Ctrl+I</source>
        <translation>Ctrl+I</translation>
    </message>
    <message>
        <source>Insert Molecule

Insert Molecule from Templates</source>
        <translation>Insérer une molécule

Insérer une molécule à partir des modèles</translation>
    </message>
    <message>
        <source>Import Molecule from File</source>
        <translation>Importer une molécule depuis un fichier</translation>
    </message>
    <message>
        <source>I&amp;mport</source>
        <translation>I&amp;mporter</translation>
    </message>
    <message>
        <source>Ctrl+J</source>
        <translation>Ctrl+J</translation>
    </message>
    <message>
        <source>Import Molecule from file</source>
        <translation>Importer une molécule depuis un fichier</translation>
    </message>
    <message>
        <source>Import Molecule

Insert Molecule from file</source>
        <translation>Importer une molécule

Insérer une molécule depuis un fichier</translation>
    </message>
    <message>
        <source>View Mode</source>
        <translation>Mode affichage</translation>
    </message>
    <message>
        <source>&amp;View Mode</source>
        <translation>Mode &amp;affichage</translation>
    </message>
    <message>
        <source>Ctrl+V</source>
        <translation>Ctrl+V</translation>
    </message>
    <message>
        <source>View Mode

View Mode</source>
        <translation>Mode affichage

Mode affichage</translation>
    </message>
    <message>
        <source>Rotate Mode</source>
        <translation>Mode rotation</translation>
    </message>
    <message>
        <source>&amp;Rotate Mode</source>
        <translation>Mode &amp;rotation</translation>
    </message>
    <message>
        <source>Rotate Mode

Rotate Mode</source>
        <translation>Mode rotation

Mode rotation</translation>
    </message>
    <message>
        <source>Draw Bond</source>
        <translation>Tracer une liaison</translation>
    </message>
    <message>
        <source>&amp;Draw Bond</source>
        <translation>&amp;Tracer une liaison</translation>
    </message>
    <message>
        <source>Ctrl+B</source>
        <translation>Ctrl+B</translation>
    </message>
    <message>
        <source>Draw a bond</source>
        <translation>Trace une liaison</translation>
    </message>
    <message>
        <source>Draw Bond

Draw a bond</source>
        <translation>Tracer une liaison

Trace une liaison</translation>
    </message>
    <message>
        <source>Add Dashed Bond</source>
        <translation>Ajouter une liaison en pointillés</translation>
    </message>
    <message>
        <source>&amp;Add Dashed Bond</source>
        <translation>&amp;Ajouter une liaison en pointillés</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>Add Dashed Bond

Add Dashed Bond</source>
        <translation>Ajouter une liaison en pointillés

Ajouter une liaison en pointillés</translation>
    </message>
    <message>
        <source>Add Stereo Bond</source>
        <translation>Ajouter une liaison stéréo</translation>
    </message>
    <message>
        <source>&amp;Add Stereo Bond</source>
        <translation>Ajouter une liaison &amp;stéréo</translation>
    </message>
    <message>
        <source>Add Stereo Bond

Add Stereo Bond</source>
        <translation>Ajouter une liaison stéréo

Ajouter une liaison stéréo</translation>
    </message>
    <message>
        <source>Zig Zag Structure</source>
        <translation>Chaîne en zigzag</translation>
    </message>
    <message>
        <source>&amp;Zig Zag Structure</source>
        <translation>Chaîne en &amp;zigzag</translation>
    </message>
    <message>
        <source>Ctrl+G</source>
        <translation>Ctrl+G</translation>
    </message>
    <message>
        <source>Zig Zag Structure

Zig Zag Structure</source>
        <translation>Chaîne en zigzag

Chaîne en zigzag</translation>
    </message>
    <message>
        <source>Delete Item</source>
        <translation>Supprimer un objet</translation>
    </message>
    <message>
        <source>&amp;Delete Item</source>
        <translation>&amp;Supprimer un objet</translation>
    </message>
    <message>
        <source>Ctrl+X</source>
        <translation>Ctrl+X</translation>
    </message>
    <message>
        <source>Delete Item

Delete Item</source>
        <translation>Supprimer un objet

Supprimer un objet</translation>
    </message>
    <message>
        <source>Fixed Length</source>
        <translation>Longueur fixe</translation>
    </message>
    <message>
        <source>&amp;Fixed Length</source>
        <translation>&amp;Longueur fixe</translation>
    </message>
    <message>
        <source>Fixed Length

Fixed Length</source>
        <translation>Longueur fixe

Longueur fixe</translation>
    </message>
    <message>
        <source>Fixed Angle</source>
        <translation>Angle fixe</translation>
    </message>
    <message>
        <source>&amp;Fixed Angle</source>
        <translation>Angle &amp;fixe</translation>
    </message>
    <message>
        <source>Fixed Angle

Fixed Angle</source>
        <translation>Angle fixe

Angle fixe</translation>
    </message>
    <message>
        <source>I3D View</source>
        <translation>Vue I3D</translation>
    </message>
    <message>
        <source>&amp;I3DView</source>
        <translation>Vue &amp;I3D</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Ctrl+F</translation>
    </message>
    <message>
        <source>I3D View

3D View of Models</source>
        <translation>Vue I3D

Vue 3D des modèles</translation>
    </message>
    <message>
        <source>Benzene</source>
        <translation>Benzène</translation>
    </message>
    <message>
        <source>&amp;Benzene</source>
        <translation>&amp;Benzène</translation>
    </message>
    <message>
        <source>Benzene

Benzene</source>
        <translation>Benzène

Benzène</translation>
    </message>
    <message>
        <source>Cubane</source>
        <translation>Cubane</translation>
    </message>
    <message>
        <source>&amp;Cubane</source>
        <translation>&amp;Cubane</translation>
    </message>
    <message>
        <source>Cubane

Cubane</source>
        <translation>Cubane

Cubane</translation>
    </message>
    <message>
        <source>Hexane</source>
        <translation>Hexane</translation>
    </message>
    <message>
        <source>&amp;Hexane</source>
        <translation>&amp;Hexane</translation>
    </message>
    <message>
        <source>Hexane

Hexane</source>
        <translation>Hexane

Hexane</translation>
    </message>
    <message>
        <source>Megaphon</source>
        <translation>Mégaphone</translation>
    </message>
    <message>
        <source>&amp;Megaphon</source>
        <translation>&amp;Mégaphone</translation>
    </message>
    <message>
        <source>Megaphon

Megaphon</source>
        <translation>Mégaphone

Mégaphone</translation>
    </message>
    <message>
        <source>Prop</source>
        <translation>Propane</translation>
    </message>
    <message>
        <source>&amp;Prop</source>
        <translation>&amp;Propane</translation>
    </message>
    <message>
        <source>Prop

Prop</source>
        <translation>Propane

Propane</translation>
    </message>
    <message>
        <source>Water</source>
        <translation>Eau</translation>
    </message>
    <message>
        <source>&amp;Water</source>
        <translation>&amp;Eau</translation>
    </message>
    <message>
        <source>Water

Water</source>
        <translation>Eau

Eau</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>&amp;Insertion</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>Ai&amp;de</translation>
    </message>
    <message>
        <source>More buttons</source>
        <translation>Autres boutons</translation>
    </message>
    <message>
        <source>file operations</source>
        <translation>Opérations sur les fichiers</translation>
    </message>
    <message>
        <source>draw operations</source>
        <translation>Outils de dessin</translation>
    </message>
    <message>
        <source>Add Stereo Bond, towards the viewer</source>
        <translation>Ajouter une liaison stéréo, vers l’observateur</translation>
    </message>
    <message>
        <source>Add Stereo Bond, away from the viewer</source>
        <translation>Ajouter une liaison stéréo, à l’opposé de l’observateur</translation>
    </message>
    <message>
        <source>I3D Model View</source>
        <translation>Vue I3D du modèle</translation>
    </message>
    <message>
        <source>Molecule library</source>
        <translation>Bibliothèque de molécules</translation>
    </message>
    <message>
        <source>Creating file</source>
        <translation>Création du fichier</translation>
    </message>
    <message>
        <source>Opening file...</source>
        <translation>Ouverture du fichier…</translation>
    </message>
    <message>
        <source>Choose a File</source>
        <translation>Choisir un fichier</translation>
    </message>
    <message>
        <source>KytBench (*.kyt)</source>
        <translation>KytBench (*.kyt)</translation>
    </message>
    <message>
        <source>Opening aborted</source>
        <translation>Ouverture annulée</translation>
    </message>
    <message>
        <source>Loaded document: </source>
        <translation>Document chargé&#xa0;: </translation>
    </message>
    <message>
        <source>Choose a Filename to save under</source>
        <translation>Choisir le nom du fichier à enregistrer</translation>
    </message>
    <message>
        <source>KytBench(*.kyt)</source>
        <translation>KytBench(*.kyt)</translation>
    </message>
    <message>
        <source>Saving file...</source>
        <translation>Enregistrement du fichier…</translation>
    </message>
    <message>
        <source>noname.kyt</source>
        <translation>noname.kyt</translation>
    </message>
    <message>
        <source>Saving Done !</source>
        <translation>Enregistrement terminé.</translation>
    </message>
    <message>
        <source>Saving file under new filename...</source>
        <translation>Enregistrement du fichier sous un nouveau nom…</translation>
    </message>
    <message>
        <source>.kyt</source>
        <translation>.kyt</translation>
    </message>
    <message>
        <source>Saving As..</source>
        <translation>Enregistrement sous…</translation>
    </message>
    <message>
        <source>Saving aborted</source>
        <translation>Enregistrement annulé</translation>
    </message>
    <message>
        <source>Closing file...</source>
        <translation>Fermeture du fichier…</translation>
    </message>
    <message>
        <source>Close !</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Closing the File..
Do your want to save ur changes to File?</source>
        <translation>Le fichier va être fermé.
Voulez-vous enregistrer vos modifications dans le fichier&#xa0;?</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>Done !</source>
        <translation>Terminé.</translation>
    </message>
    <message>
        <source>Close Aborted...</source>
        <translation>Fermeture annulée</translation>
    </message>
    <message>
        <source>Printing...</source>
        <translation>Impression…</translation>
    </message>
    <message>
        <source>Quit !</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Do your really want to quit?</source>
        <translation>Voulez-vous vraiment quitter l’application&#xa0;?</translation>
    </message>
    <message>
        <source>Exiting application...</source>
        <translation>Fermeture de l’application…</translation>
    </message>
    <message>
        <source>Loading Water..</source>
        <translation>Chargement&#xa0;: eau…</translation>
    </message>
    <message>
        <source>Water Loaded !</source>
        <translation>Chargé&#xa0;: eau.</translation>
    </message>
    <message>
        <source>Loading Prop..</source>
        <translation>Chargement&#xa0;: propane…</translation>
    </message>
    <message>
        <source>Prop Loaded !</source>
        <translation>Chargé&#xa0;: propane.</translation>
    </message>
    <message>
        <source>Loading Megaphon..</source>
        <translation>Chargement&#xa0;: mégaphone…</translation>
    </message>
    <message>
        <source>Megaphon Loaded !</source>
        <translation>Chargé&#xa0;: mégaphone.</translation>
    </message>
    <message>
        <source>Loading Hexane..</source>
        <translation>Chargement&#xa0;: hexane…</translation>
    </message>
    <message>
        <source>Hexane Loaded !</source>
        <translation>Chargé&#xa0;: hexane.</translation>
    </message>
    <message>
        <source>Loading Cubane..</source>
        <translation>Chargement&#xa0;: cubane…</translation>
    </message>
    <message>
        <source>Cubane Loaded !</source>
        <translation>Chargé&#xa0;: cubane.</translation>
    </message>
    <message>
        <source>Loading Benzene..</source>
        <translation>Chargement&#xa0;: benzène…</translation>
    </message>
    <message>
        <source>Benzene Loaded !</source>
        <translation>Chargé&#xa0;: benzène.</translation>
    </message>
    <message>
        <source>Insert Molecule..</source>
        <translation>Insertion d’une molécule…</translation>
    </message>
    <message>
        <source>Choose a Molecule</source>
        <translation>Choisir une molécule</translation>
    </message>
    <message>
        <source>KytFragment (*.kyf)</source>
        <translation>KytFragment (*.kyf)</translation>
    </message>
    <message>
        <source>KytStudio @PROJECT_VERSION@</source>
        <translation>KytStudio @PROJECT_VERSION@</translation>
    </message>
    <message>
        <source>KytStudio
Version @PROJECT_VERSION@
(c) 2026 by the KytStudio contributors</source>
        <translation>KytStudio
Version @PROJECT_VERSION@
© 2026 les contributeurs de KytStudio</translation>
    </message>
    <message>
        <source>State of the drawing</source>
        <translation>État du dessin</translation>
    </message>
    <message>
        <source>depth %1</source>
        <translation>profondeur %1</translation>
    </message>
    <message>
        <source>%1 atoms on top of each other</source>
        <translation>%1 atomes superposés</translation>
    </message>
    <message>
        <source>Nothing to undo</source>
        <translation>Rien à annuler</translation>
    </message>
    <message>
        <source>Undone: %1</source>
        <translation>Annulé : %1</translation>
    </message>
    <message>
        <source>Nothing to redo</source>
        <translation>Rien à rétablir</translation>
    </message>
    <message>
        <source>Redone: %1</source>
        <translation>Rétabli : %1</translation>
    </message>
    <message>
        <source>%1 outside the canvas</source>
        <translation>%1 hors de la zone de dessin</translation>
    </message>
    <message>
        <source>not saved: %1</source>
        <translation>non enregistré : %1</translation>
    </message>
    <message>
        <source>%1 selected</source>
        <translation>Sélection : %1</translation>
    </message>
    <message>
        <source>cannot be opened: %1</source>
        <translation>impossible à ouvrir : %1</translation>
    </message>
    <message>
        <source>Nothing to copy</source>
        <translation>Rien à copier</translation>
    </message>
    <message>
        <source>Copied for KytStudio only: kytconvert is not installed</source>
        <translation>Copié pour KytStudio seulement : kytconvert n’est pas installé</translation>
    </message>
    <message>
        <source>Copied: %1 atoms</source>
        <translation>Copié : %1 atomes</translation>
    </message>
    <message>
        <source>The clipboard cannot be read</source>
        <translation>Le presse-papiers est illisible</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Coller</translation>
    </message>
    <message>
        <source>Drop Files</source>
        <translation>Déposer des fichiers</translation>
    </message>
    <message>
        <source>Still working; Escape cancels</source>
        <translation>Encore en cours ; Échap annule</translation>
    </message>
    <message>
        <source>Reading... (Escape cancels)</source>
        <translation>Lecture… (Échap annule)</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Annulé</translation>
    </message>
    <message>
        <source>Cannot be read: %1</source>
        <translation>Illisible : %1</translation>
    </message>
    <message>
        <source>Added: %1 atoms, without the properties of the SD file</source>
        <translation>Ajouté : %1 atomes, sans les propriétés du fichier SD</translation>
    </message>
    <message>
        <source>Added: %1 atoms</source>
        <translation>Ajouté : %1 atomes</translation>
    </message>
    <message>
        <source>No molecule under the pointer</source>
        <translation>Pas de molécule sous le pointeur</translation>
    </message>
    <message>
        <source>The molecule is locked</source>
        <translation>La molécule est verrouillée</translation>
    </message>
    <message>
        <source>kytconvert, which lays out molecules, is not installed</source>
        <translation>kytconvert, qui dispose les molécules, n’est pas installé</translation>
    </message>
    <message>
        <source>Cannot be laid out: %1</source>
        <translation>Disposition impossible : %1</translation>
    </message>
    <message>
        <source>The molecule was changed meanwhile</source>
        <translation>La molécule a été modifiée entre-temps</translation>
    </message>
    <message>
        <source>Laying out... (Escape cancels)</source>
        <translation>Disposition… (Échap annule)</translation>
    </message>
    <message>
        <source>Laid out: %1 atoms</source>
        <translation>Disposé : %1 atomes</translation>
    </message>
    <message>
        <source>unexpected result</source>
        <translation>résultat inattendu</translation>
    </message>
    <message>
        <source>Tidy</source>
        <translation>Redisposer</translation>
    </message>
    <message>
        <source>copy of %1: Ctrl+Shift+O</source>
        <translation>copie du %1 : Ctrl+Maj+O</translation>
    </message>
    <message>
        <source>No older copy</source>
        <translation>Aucune copie plus ancienne</translation>
    </message>
    <message>
        <source>No copy to open</source>
        <translation>Aucune copie à ouvrir</translation>
    </message>
    <message>
        <source>Open Copy</source>
        <translation>Ouvrir une copie</translation>
    </message>
    <message>
        <source>Copy of %1 opened</source>
        <translation>Copie du %1 ouverte</translation>
    </message>
    <message>
        <source>Canvas

Draw and move with the left mouse button. Right-click on an atom or a wedge for its properties.

Letters: the element of the atom under the pointer, such as N or Cl
Shift+drag, Shift+click: select atoms in View Mode
Ctrl+A: select all
Delete, Backspace: delete the selected atoms, or the item under the pointer
Ctrl+C: copy the selected atoms, or the molecule under the pointer, or all
Shift+Insert, Ctrl+Shift+V: paste
Ctrl+L: lay out the molecule anew
Ctrl+Shift+O: open the newest safety copy; again: the one before
Ctrl+Z: undo
Ctrl+Shift+Z, Ctrl+Y: redo
Escape: cancel the current gesture, or clear the selection
Ctrl+wheel, Ctrl++, Ctrl+-: zoom
Ctrl+0: full size
Ctrl+9: the whole drawing
1 to 8: modes, in the order of the toolbar
9: Fixed Length
0: Fixed Angle</source>
        <translation>Zone de dessin

Dessinez et déplacez avec le bouton gauche de la souris. Un clic droit sur un atome ou un coin affiche ses propriétés.

Lettres : l’élément de l’atome sous le pointeur, par exemple N ou Cl
Maj+glisser, Maj+clic : sélectionner des atomes en mode Affichage
Ctrl+A : tout sélectionner
Suppr, Retour arrière : supprimer les atomes sélectionnés, sinon l’objet sous le pointeur
Ctrl+C : copier les atomes sélectionnés, sinon la molécule sous le pointeur ou tout
Maj+Inser, Ctrl+Maj+V : coller
Ctrl+L : redisposer la molécule
Ctrl+Maj+O : ouvrir la copie de sécurité la plus récente ; de nouveau : la précédente
Ctrl+Z : annuler
Ctrl+Maj+Z, Ctrl+Y : rétablir
Échap : interrompre ou annuler la sélection
Ctrl+molette, Ctrl++, Ctrl+- : zoom
Ctrl+0 : taille réelle
Ctrl+9 : le dessin entier
1 à 8 : modes, dans l’ordre de la barre d’outils
9 : Longueur fixe
0 : Angle fixe</translation>
    </message>
</context>
<context>
    <name>KytStudioDoc</name>
    <message>
        <source>noname.kyt</source>
        <translation>noname.kyt</translation>
    </message>
</context>
<context>
    <name>KytStudioView</name>
    <message>
        <source>Bond Length: %.3f  Bond Angle: %.2f</source>
        <translation>Longueur de liaison&#xa0;: %.3f  Angle&#xa0;: %.2f</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Déplacement</translation>
    </message>
    <message>
        <source>Rotate</source>
        <translation>Rotation</translation>
    </message>
    <message>
        <source>Element</source>
        <translation>Élément</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Sélection</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>Le fichier %1 existe déjà.
Voulez-vous le remplacer&#xa0;?</translation>
    </message>
</context>
<context>
    <name>SaveDialog</name>
    <message>
        <source>&quot;%1&quot; is a folder.</source>
        <translation>« %1 » est un dossier.</translation>
    </message>
    <message>
        <source>Saves as: %1</source>
        <translation>Enregistre sous : %1</translation>
    </message>
    <message>
        <source>The folder &quot;%1&quot; does not exist.</source>
        <translation>Le dossier « %1 » n’existe pas.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a regular file.</source>
        <translation>« %1 » n’est pas un fichier ordinaire.</translation>
    </message>
    <message>
        <source>No write permission for &quot;%1&quot;.</source>
        <translation>Pas de droit d’écriture pour « %1 ».</translation>
    </message>
</context>
</TS>
