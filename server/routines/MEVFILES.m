MEVFILES ; The table of files, and filing and removing entries
 ; Each file has a zero node NAME^number^last entry^number of entries, entries (ien,0) whose first piece is the name,
 ; and the cross-reference "B" from name to entry. MEVNAMEINDEX describes the indexes of searchable files.
 ;
TABLE ; number;name;global;S if clients may search it: not patients' records, not the server's own tables
 ;;2;PATIENT;^MEVPAT;S
 ;;4;LOCATION;^AUTTLOC;S
 ;;7;DISCIPLINE;^MEVDIS;S
 ;;40.7;CLINIC;^MEVCLN;S
 ;;44;HOSPITAL LOCATION;^MEVHLO;S
 ;;50;DRUG;^MEVDRG;S
 ;;60;LAB TEST;^MEVLAB;S
 ;;71;RADIOLOGY PROCEDURE;^MEVRAD;S
 ;;80.1;ICD PROCEDURE;^MEVICP;S
 ;;200;USER;^MEVUSR;S
 ;;8930;USER CLASS;^MEVCLS
 ;;9000010;VISIT;^MEVVST
 ;;9999999.04;MANUFACTURER LOT;^AUTTIML
 ;;9999999.07;MEASUREMENT;^MEVMSR;S
 ;;9999999.09;EDUCATION TOPIC;^MEVEDT;S
 ;;9999999.11;VENDOR;^AUTTVNDR;S
 ;;9999999.14;VACCINE;^AUTTIMM;S
 ;;9999999.15;EXAM;^MEVEXM;S
 ;;9999999.28;SKIN TEST;^MEVSKT;S
 ;;9999999.64;HEALTH FACTOR;^MEVHFC;S
 ;;9999999.68;DIAGNOSTIC PROCEDURE;^MEVDXP;S
 ;;9999999.88;CPT MODIFIER;^MEVCPM;S
 ;;9100.1;REPRODUCTIVE FACTORS;^MEVREP
 ;;9100.2;INFANT FEEDING;^MEVVIF
 ;;9100.3;BIRTH MEASUREMENT;^MEVBMSR
 ;;9100.4;FUNCTIONAL STATUS;^MEVVELD
 ;;9100.5;ASTHMA;^MEVVAST
 ;;9100.6;TREATMENT CONTRACT;^MEVVTXC
 ;;9100.7;REFUSAL;^MEVREF
 ;;9100.8;EMERGENCY ROOM VISIT;^MEVVER
 ;;9100.9;ASTHMA REGISTRY;^MEVREG
 ;;
ROOT(file) ; The global of a file, empty for an unknown number
 IF '$DATA(roots) DO LOAD
 QUIT $PIECE($GET(roots(file)),";")
 ;
SEARCHED(file) ; The global of a searchable file, empty for any other
 IF '$DATA(roots) DO LOAD
 QUIT $SELECT($PIECE($GET(roots(file)),";",2)="S":$$ROOT(file),1:"")
 ;
NEXT(file) ; The next searchable file, empty after the last
 IF '$DATA(roots) DO LOAD
 FOR  SET file=$ORDER(roots(file)) QUIT:'file  QUIT:$$SEARCHED(file)'=""
 QUIT $SELECT(file:file,1:"")
 ;
LOAD ; Caches the table in roots(number)=global;S, and roots("INDEXED",global) for searchable files
 NEW line,text
 FOR line=1:1 SET text=$TEXT(TABLE+line) QUIT:$PIECE(text,";",3)=""  DO
 . SET roots($PIECE(text,";",3))=$PIECE(text,";",5,6)
 . SET:$PIECE(text,";",6)="S" roots("INDEXED",$PIECE(text,";",5))=""
 QUIT
 ;
NAME(file,ien) ; The name of an entry, empty if it does not exist
 IF 'ien QUIT ""
 QUIT $PIECE($GET(@$$ROOT(file)@(ien,0)),"^")
 ;
EXISTS(file,ien) ; True if the entry exists
 IF ien'?1N.11N QUIT 0
 QUIT $DATA(@$$ROOT(file)@(ien,0))#10
 ;
START ; Creates the zero nodes of all files
 NEW line,root,text
 SET ^MEVFND=1 ; no entries, all indexed
 DO START^MEVDATAVERSION
 FOR line=1:1 SET text=$TEXT(TABLE+line) QUIT:$PIECE(text,";",3)=""  DO
 . SET root=$PIECE(text,";",5)
 . SET @root@(0)=$PIECE(text,";",4)_"^"_$PIECE(text,";",3)_"^0^0"
 QUIT
 ;
FILE(root,ien,node) ; Files an entry with its indexes and counts; an ien of 0 means the next one. Returns the ien.
 NEW header
 SET:'ien ien=$PIECE(@root@(0),"^",3)+1
 SET @root@(ien,0)=node
 DO TOUCHED^MEVAUDIT(root,ien)
 SET:$PIECE(node,"^")'="" @root@("B",$EXTRACT($PIECE(node,"^"),1,80),ien)=""
 IF '$DATA(roots) DO LOAD
 IF $DATA(roots("INDEXED",root)) DO INDEX^MEVNAMEINDEX(root,ien)
 SET header=@root@(0)
 IF ien>$PIECE(header,"^",3) SET $PIECE(header,"^",3)=ien
 SET $PIECE(header,"^",4)=$PIECE(header,"^",4)+1,@root@(0)=header
 IF $DATA(audit) DO CHANGED^MEVCONFLICTS(root,ien,$PIECE(node,"^"))
 QUIT ien
 ;
FILEAT(root,ien,node,patient,date) ; The same for an entry with a patient and a date: "AA" lists it latest first
 SET ien=$$FILE(root,ien,node)
 SET @root@("AA",patient,$$INVERSE^MEVDATE(date),ien)=""
 QUIT ien
 ;
REMOVE(root,ien) ; Removes an entry and its cross-references; the audit keeps it
 NEW date,header,node,patient
 DO KEEP(root,ien)
 SET node=@root@(ien,0),patient=$PIECE(node,"^")
 KILL @root@("B",$EXTRACT(patient,1,80),ien)
 SET date=""
 FOR  SET date=$ORDER(@root@("AA",patient,date)) QUIT:date=""  KILL @root@("AA",patient,date,ien)
 KILL @root@(ien)
 SET header=@root@(0),$PIECE(header,"^",4)=$PIECE(header,"^",4)-1,@root@(0)=header
 QUIT
 ;
KEEP(root,ien) ; Copies an entry to the call's audit node before a change
 MERGE ^MEVAUD(audit,"BEFORE",root,ien)=@root@(ien)
 DO CHANGED^MEVCONFLICTS(root,ien,$PIECE(@root@(ien,0),"^"))
 DO TOUCHED^MEVAUDIT(root,ien)
 QUIT
