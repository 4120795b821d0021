MEVDEL ; Deletes records, after the user's rights were checked; the audit keeps them
 ;
DELREP ; Call: patient
 DO OFPATIENT("^MEVREP","REP")
 QUIT
DELBMSR ; Call: patient
 DO OFPATIENT("^MEVBMSR","BMSR")
 QUIT
DELVIF ; Call: record, as in all that follow
 DO RECORD("^MEVVIF","VIF")
 QUIT
DELVELD ;
 DO RECORD("^MEVVELD","VELD")
 QUIT
DELVAST ;
 DO RECORD("^MEVVAST","VAST")
 QUIT
DELVTXC ;
 DO RECORD("^MEVVTXC","VTXC")
 QUIT
DELREF ;
 DO RECORD("^MEVREF","REF")
 QUIT
 ;
DELVER ;
 DO RECORD("^MEVVER","VER")
 QUIT
 ;
OFPATIENT(root,kind) ; The one record of a patient
 SET reply=$$REFUSED^MEVMAY(kind)
 QUIT:reply'=""
 IF '$$KNOWN^MEVHOST(param) SET reply=$$NOPATIENT^MEVHOST(param) QUIT
 IF '$DATA(@root@(param,0)) DO NO^MEVSET("The record does not exist any more.") QUIT
 DO REMOVE^MEVDD(root,param),CHANGED^MEVSET(param,kind)
 QUIT
 ;
RECORD(root,kind) ; A record by its number, unless it is locked
 NEW patient
 SET reply=$$REFUSED^MEVMAY(kind)
 QUIT:reply'=""
 QUIT:'$$MAY^MEVSET(root,param,"","record")
 SET patient=$PIECE(@root@(param,0),"^")
 DO REMOVE^MEVDD(root,param),CHANGED^MEVSET(patient,kind)
 QUIT
